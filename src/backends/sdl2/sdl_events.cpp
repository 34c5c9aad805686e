// SPDX-License-Identifier: MIT
#include "backends/sdl2/sdl_events.h"

#include <utility>

#include "backends/sdl2/sdl_window_hook.h"
#include "util/mutex_lock.h"
#include "util/thread_local_value.h"

namespace libnivral {
namespace {

/// Events of our windows that may be waiting in the queue before they are cleared out. SDL's queue holds
/// 65535 and refuses everything once it is full.
constexpr int kMaxWaiting = 512;

/// Panes with an SDL window, the newest first. SDL's own list of windows must not be walked while another
/// thread opens or closes one. The lock is taken last of all and held for notes only.
CMutexLock g_panesLock;
PaneRegistration* g_panes = nullptr;

ThreadLocalValue<RenderScope*> g_renderScope;
ThreadLocalValue<bool> g_passingOnSizeChange;
std::atomic<int> g_waiting{0};
std::atomic<uint32_t> g_deviceGeneration{0};

constexpr bool IsOwn(uint32_t type) {
  return type == kSizeChangeEvent || type == kTeardownEvent;
}

/// The window that an event is about, or 0.
uint32_t WindowOf(const SDL_Event& event) {
  const uint32_t type = event.type;
  if (type == SDL_WINDOWEVENT || (type >= SDL_KEYDOWN && type <= SDL_TEXTINPUT) ||
      (type >= SDL_MOUSEMOTION && type <= SDL_MOUSEWHEEL) || IsOwn(type))
    return event.window.windowID;
  if (type >= SDL_FINGERDOWN && type <= SDL_FINGERMOTION) return event.tfinger.windowID;
  if (type >= SDL_DROPFILE && type <= SDL_DROPCOMPLETE) return event.drop.windowID;
  return 0;
}

bool IsPane(uint32_t windowId) {
  CAutoLock guard(&g_panesLock);
  return PaneRegistration::Find(windowId) != nullptr;
}

/// For SDL_FilterEvents: 0 removes the event.
int Remove(SDL_Event& event) {
  if (event.type == SDL_DROPFILE || event.type == SDL_DROPTEXT) SDL_free(event.drop.file);
  return 0;
}

int SDLCALL RemoveOfAnyPane(void*, SDL_Event* event) {
  return IsPane(WindowOf(*event)) ? Remove(*event) : 1;
}

int SDLCALL RemoveOfWindow(void* windowId, SDL_Event* event) {
  return WindowOf(*event) == *static_cast<const uint32_t*>(windowId) ? Remove(*event) : 1;
}

int SDLCALL RemoveOwnOfWindow(void* windowId, SDL_Event* event) {
  return IsOwn(event->type) ? RemoveOfWindow(windowId, event) : 1;
}

void CountWaiting() {
  if (g_waiting.fetch_add(1, std::memory_order_relaxed) < kMaxWaiting) return;
  g_waiting.store(0, std::memory_order_relaxed);
  SDL_FilterEvents(&RemoveOfAnyPane, nullptr);
}

/// A size change that the drawing thread will pass on.
bool HoldsBack(const SDL_Event& event) {
  return !g_passingOnSizeChange.Get() && event.type == SDL_WINDOWEVENT &&
         (event.window.event == SDL_WINDOWEVENT_SIZE_CHANGED ||
          event.window.event == SDL_WINDOWEVENT_DISPLAY_CHANGED);
}

bool IsExposure(const SDL_Event& event) {
  return event.type == SDL_WINDOWEVENT && event.window.event == SDL_WINDOWEVENT_EXPOSED;
}

/// The client is asked to draw again from its message loop. One message at a time: it answers for all
/// exposures before it.
void PostRedraw(const PaneRegistration& pane) {
  PaneEvents& events = pane.Events();
  if (!events.WantsFlash() || events.redrawPosted.exchange(true)) return;
  if (!PostMessageW(events.window, RedrawMessage(), pane.Pane(), 0)) events.redrawPosted = false;
}

void CountDeviceReset(uint32_t type) {
  if (type == SDL_RENDER_DEVICE_RESET) g_deviceGeneration.fetch_add(1, std::memory_order_relaxed);
  if (RenderScope* const scope = g_renderScope.Get()) scope->CountReset();
}

/// Leaves the pane its notes. Whether there is a pane.
bool NotifyPane(const SDL_Event& event) {
  CAutoLock guard(&g_panesLock);
  const PaneRegistration* const pane = PaneRegistration::Find(WindowOf(event));
  if (!pane) return false;
  if (HoldsBack(event)) pane->Events().windowSizeChanged = true;
  if (IsExposure(event)) PostRedraw(*pane);
  return true;
}

}  // namespace

PaneRegistration::PaneRegistration(uint32_t windowId, PaneEvents& events, WPARAM pane)
    : m_windowId(windowId), m_events(events), m_pane(pane) {
  CAutoLock guard(&g_panesLock);
  m_next = std::exchange(g_panes, this);
}

PaneRegistration::~PaneRegistration() {
  {
    CAutoLock guard(&g_panesLock);
    PaneRegistration** link = &g_panes;
    while (*link != this)
      link = &(*link)->m_next;
    *link = m_next;
    // SDL counts from 1 again when it is started again: the number may be another pane's by now.
    if (Find(m_windowId)) return;
  }
  SDL_FilterEvents(&RemoveOfWindow, &m_windowId);
}

PaneRegistration* PaneRegistration::Find(uint32_t windowId) {
  PaneRegistration* pane = g_panes;
  while (pane && pane->m_windowId != windowId)
    pane = pane->m_next;
  return pane;
}

int SDLCALL FilterEvent(void*, SDL_Event* event) {
  if (event->type == SDL_RENDER_DEVICE_RESET || event->type == SDL_RENDER_TARGETS_RESET)
    CountDeviceReset(event->type);
  if (!NotifyPane(*event)) return 1;
  CountWaiting();
  return HoldsBack(*event) ? 0 : 1;
}

void PassOnSizeChange(SDL_Window* window) {
  SDL_Event event{};
  event.type = SDL_WINDOWEVENT;
  event.window.event = SDL_WINDOWEVENT_SIZE_CHANGED;
  event.window.windowID = SDL_GetWindowID(window);
  SDL_GetWindowSize(window, &event.window.data1, &event.window.data2);
  g_passingOnSizeChange.Set(true);
  SDL_PushEvent(&event);
  g_passingOnSizeChange.Set(false);
}

int PushOwnEvent(SDL_Event& event) {
  const int pushed = SDL_PushEvent(&event);
  SDL_FilterEvents(&RemoveOwnOfWindow, &event.window.windowID);
  return pushed;
}

RenderScope::RenderScope() : m_outer(g_renderScope.Get()) {
  g_renderScope.Set(this);
}

RenderScope::~RenderScope() {
  g_renderScope.Set(m_outer);
  SDL_Event taken;
  while (m_resets-- > 0 &&
         SDL_PeepEvents(&taken, 1, SDL_GETEVENT, SDL_RENDER_TARGETS_RESET, SDL_RENDER_DEVICE_RESET) > 0) {
  }
}

uint32_t RenderDeviceGeneration() {
  return g_deviceGeneration.load(std::memory_order_relaxed);
}

}  // namespace libnivral
