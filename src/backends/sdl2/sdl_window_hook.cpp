// SPDX-License-Identifier: MIT
#include "backends/sdl2/sdl_window_hook.h"

#include <array>
#include <map>
#include <optional>
#include <utility>

#include "util/mutex_lock.h"

namespace libnivral {
namespace {

/// What one of our procedures in a window's chain does. It goes on passing messages to the client when its
/// pane is gone, since a procedure that the client has put on top may still call it; the library is never
/// unloaded.
struct Link {
  WNDPROC next = nullptr;  ///< SDL's procedure; the client's without a pane
  WNDPROC client = nullptr;
  WindowHook::OnRedraw onRedraw = nullptr;
  const WindowHook* owner = nullptr;
  bool inChain = false;
};

/// A window needs another procedure of ours for each that its client put on top and left there for the next
/// pane.
constexpr size_t kLevels = 8;
constexpr size_t kNoLevel = kLevels;
using Links = std::array<Link, kLevels>;

CMutexLock g_linksLock;  ///< held for copies only
std::map<HWND, Links> g_links;

std::optional<Link> Find(HWND window, size_t level) {
  CAutoLock guard(&g_linksLock);
  const auto found = g_links.find(window);
  if (found == g_links.end()) return std::nullopt;
  return found->second[level];
}

void Forget(HWND window) {
  CAutoLock guard(&g_linksLock);
  g_links.erase(window);
}

/// Whether SDL's answer would not fit a window that it did not make.
bool IsForTheClientAlone(UINT message) {
  return message == WM_NCCALCSIZE || message == WM_GETMINMAXINFO;
}

LRESULT PassOn(size_t level, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const std::optional<Link> link = Find(window, level);
  if (!link || !link->client) return DefWindowProcW(window, message, wParam, lParam);
  if (link->onRedraw && message == RedrawMessage()) {
    link->onRedraw(window, wParam);
    return 0;
  }
  const WNDPROC to = IsForTheClientAlone(message) ? link->client : link->next;
  const LRESULT result = CallWindowProcW(to, window, message, wParam, lParam);
  if (message == WM_NCDESTROY) Forget(window);
  return result;
}

template <size_t Level>
LRESULT CALLBACK HookProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return PassOn(Level, window, message, wParam, lParam);
}

template <size_t... Level>
constexpr std::array<WNDPROC, sizeof...(Level)> Procedures(std::index_sequence<Level...>) {
  return {&HookProcedure<Level>...};
}
constexpr std::array<WNDPROC, kLevels> kProcedures = Procedures(std::make_index_sequence<kLevels>());

size_t TakeLevel(HWND window, const Link& link) {
  CAutoLock guard(&g_linksLock);
  // Windows that were destroyed after their pane took no hook along that could have forgotten them.
  std::erase_if(g_links, [](const auto& entry) { return !IsWindow(entry.first); });
  Links& links = g_links[window];
  for (size_t level = 0; level < kLevels; ++level) {
    if (links[level].inChain) continue;
    links[level] = link;
    return level;
  }
  return kNoLevel;
}

void SetWindowProcedure(HWND window, WNDPROC procedure) {
  SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure));
}

}  // namespace

UINT RedrawMessage() {
  static const UINT message = RegisterWindowMessageW(L"libnivral redraw");
  return message;
}

WNDPROC WindowProcedure(HWND window) {
  return reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC));
}

WindowHook::WindowHook(HWND window, WNDPROC client, OnRedraw onRedraw)
    : m_window(window), m_level(TakeLevel(window, {WindowProcedure(window), client, onRedraw, this, true})) {
  if (m_level != kNoLevel) SetWindowProcedure(window, kProcedures[m_level]);
}

void WindowHook::Retire(bool staysInChain) {
  CAutoLock guard(&g_linksLock);
  const auto found = g_links.find(m_window);
  if (found == g_links.end()) return;
  for (Link& link : found->second) {
    if (link.owner == this) link = {link.client, link.client, nullptr, nullptr, staysInChain};
  }
}

void WindowHook::RemoveWith(SdlWindow& sdlWindow) {
  const WNDPROC top = IsWindow(m_window) ? WindowProcedure(m_window) : nullptr;
  const bool subclassed = top && m_level != kNoLevel && top != kProcedures[m_level];
  Retire(subclassed);
  sdlWindow.reset();
  if (!subclassed) return;
  SetWindowProcedure(m_window, top);
}

}  // namespace libnivral
