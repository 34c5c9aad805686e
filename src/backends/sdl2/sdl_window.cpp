// SPDX-License-Identifier: MIT
// SDLDisplayer: binding to the client's window, sizes, teardown.
#include <SDL.h>

#include "backends/sdl2/sdl_displayer.h"
#include "backends/sdl2/sdl_error.h"
#include "backends/sdl2/sdl_events.h"
#include "util/log_file.h"

namespace {

/// SDL's list of windows has no lock of its own; panes on different threads must not change it at once.
CMutexLock g_windowListLock;

void Log(const wchar_t* text) {
  CLogFile::GetInstance()->Write(1, text);
}

}  // namespace

SDLDisplayer::SDLDisplayer() : m_hEvent(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
}

SDLDisplayer::~SDLDisplayer() {
  RequestTeardown();
  ForgetPlayWnd();
}

int32_t SDLDisplayer::SetPlayWnd(HWND hwnd) {
  const AutoWindowLock guard(m_lock, hwnd);
  ForgetPlayWnd();
  BaseDisplayer::SetPlayWnd(hwnd);
  m_frameShown = 0;
  m_bound = 0;
  Log(L"SDLDisplayer::SetPlayWnd");
  ShowWindow(hwnd, SW_SHOW);
  return SetPropA(hwnd, kDisplayerKey, this);
}

void SDLDisplayer::ForgetPlayWnd() {
  if (GetPropA(m_hPlayWnd, kDisplayerKey) == this) RemovePropA(m_hPlayWnd, kDisplayerKey);
}

int32_t SDLDisplayer::InitDraw(uint32_t width, uint32_t height, uint32_t) {
  m_stopped = 0;
  if (!Bind()) return 1;
  return SetVideoSize(static_cast<int32_t>(width), static_cast<int32_t>(height)) ? 0 : 1;
}

int32_t SDLDisplayer::FreeDraw() {
  m_stopped = 1;
  return RequestTeardown() ? 0 : 1;
}

uint32_t SDLDisplayer::Bind() {
  const AutoWindowLock guard(m_lock, m_hPlayWnd);
  if (m_sdlWindow) return 1;
  try {
    if (!IsWindow(m_hPlayWnd)) return 0;
    ShowWindow(m_hPlayWnd, SW_SHOW);
    GetClientRect(m_hPlayWnd, &m_rcClient);
    RequestTeardown();
    CreateWindowOnClient();
  } catch (...) {
    CLogFile::GetInstance()->Write(2, L"SDLDisplayer::SetPlayWnd: exception");
    ReportSdlError(2, "SDLDisplayer::SetPlayWnd");
  }
  return m_bound;
}

void SDLDisplayer::CreateWindowOnClient() {
  Log(L"SDLDisplayer::SetPlayWnd: SDL_CreateWindowFrom");
  {
    CAutoLock listGuard(&g_windowListLock);
    m_sdlWindow.reset(SDL_CreateWindowFrom(m_hPlayWnd));
  }
  if (!m_sdlWindow) return;
  Log(L"SDLDisplayer::SetPlayWnd: SDL_SetWindowData");
  SDL_SetWindowData(m_sdlWindow.get(), kDisplayerKey, this);
  AdjustWinRect();
  m_bound = 1;
  ShowWindow(m_hPlayWnd, SW_SHOW);
}

bool SDLDisplayer::SetVideoSize(int32_t width, int32_t height) {
  const AutoWindowLock guard(m_lock, m_hPlayWnd);
  CLogFile::GetInstance()->Write(1, L"SDLDisplayer::SetVideoSize(dwWidth=%d, dwHeight=%d)", width, height);
  if (!m_sdlWindow) return false;
  const bool complete = m_sdlRenderer && m_sdlTexture;
  const bool newSize =
      width > 0 && height > 0 &&
      (static_cast<uint32_t>(width) != m_dwWidth || static_cast<uint32_t>(height) != m_dwHeight);
  if (complete && !newSize) return false;
  m_resizePending = 1;
  return PostEvent(kSizeChangeEvent, width, height);
}

void SDLDisplayer::AdjustDisplayRect(int32_t width, int32_t height) {
  CLogFile::GetInstance()->Write(1, L"SDLDisplayer::AdjustDisplayRect(%d,%d)", width, height);
  const AutoWindowLock guard(m_lock, m_hPlayWnd);
  m_dwWidth = static_cast<uint32_t>(width);
  m_dwHeight = static_cast<uint32_t>(height);
  m_sdlTexture.reset();
  m_sdlRenderer.reset();
  if (ResetRender()) ResetTexture();
}

bool SDLDisplayer::ResetRender() {
  Log(L"SDLDisplayer::ResetRender");
  const AutoWindowLock guard(m_lock, m_hPlayWnd);
  if (m_sdlWindow) {
    m_sdlTexture.reset();
    m_sdlRenderer.reset();
    m_sdlRenderer.reset(SDL_CreateRenderer(m_sdlWindow.get(), -1, SDL_RENDERER_ACCELERATED));
    m_deviceGeneration = RenderDeviceGeneration();
  }
  if (!m_sdlRenderer) ReportSdlError(1, "SDLDisplayer::ResetRender");
  return m_sdlRenderer != nullptr;
}

bool SDLDisplayer::ResetTexture() {
  Log(L"SDLDisplayer::ResetTexture");
  const AutoWindowLock guard(m_lock, m_hPlayWnd);
  if (m_sdlRenderer) {
    m_sdlTexture.reset();
    m_sdlTexture.reset(SDL_CreateTexture(m_sdlRenderer.get(), SDL_PIXELFORMAT_YV12,
                                         SDL_TEXTUREACCESS_STREAMING, static_cast<int>(m_dwWidth),
                                         static_cast<int>(m_dwHeight)));
  }
  if (!m_sdlTexture) ReportSdlError(1, "SDLDisplayer::ResetTexture");
  return m_sdlTexture != nullptr;
}

void SDLDisplayer::AdjustWinRect() {
  if (m_stopped) return;
  Log(L"SDLDisplayer::AdjustWinRect");
  const AutoWindowLock guard(m_lock, m_hPlayWnd);
  if (!IsWindow(m_hPlayWnd)) return;
  BaseDisplayer::AdjustWinRect();
  m_displayRect = {0, 0, m_rcClient.right - m_rcClient.left, m_rcClient.bottom - m_rcClient.top};
  if (m_fMosaicRight > m_fMosaicLeft && m_fMosaicBottom > m_fMosaicTop) UpdateMosaicRect();
}

// SDL holds its process-wide lock of event watchers while the filter runs. Making a device in there would
// keep the window's thread, which pushes events too, from answering the driver; so the filter only notes that
// the event came through, and the work is done right after.
bool SDLDisplayer::PostEvent(uint32_t type, int32_t first, int32_t second) {
  if (!m_sdlWindow || !IsWindow(m_hPlayWnd)) return false;
  SDL_Event event{};
  event.type = type;
  event.window.windowID = SDL_GetWindowID(m_sdlWindow.get());
  event.window.data1 = first;
  event.window.data2 = second;
  m_posting = true;
  m_accepted = false;
  const bool pushed = PushOwnEvent(event);
  m_posting = false;
  if (m_accepted) HandleOwnEvent(type, first, second);
  return pushed;
}

void SDLDisplayer::OnOwnEvent(uint32_t type, int32_t first, int32_t second) {
  if (m_posting) {
    m_accepted = true;
  } else {
    HandleOwnEvent(type, first, second);
  }
}

void SDLDisplayer::HandleOwnEvent(uint32_t type, int32_t first, int32_t second) {
  if (type == kTeardownEvent) {
    Teardown();
  } else if (!m_stopped) {
    AdjustDisplayRect(first, second);
    m_resizePending = 0;
  }
}

uint32_t SDLDisplayer::RequestTeardown() {
  const AutoWindowLock guard(m_lock, m_hPlayWnd);
  if (!m_sdlWindow) return 0;
  if (IsWindowThread(m_hPlayWnd) && PostEvent(kTeardownEvent, 0, 0)) return 1;
  return Teardown();
}

uint32_t SDLDisplayer::Teardown() {
  const AutoWindowLock guard(m_lock, m_hPlayWnd);
  m_bound = 0;
  SwitchToThread();
  if (!m_sdlWindow) return 0;
  // From here on the event filter no longer finds this displayer; destroying the renderer waits for one that
  // has.
  SDL_SetWindowData(m_sdlWindow.get(), kDisplayerKey, nullptr);
  m_sdlTexture.reset();
  m_sdlRenderer.reset();
  const uint32_t windowId = SDL_GetWindowID(m_sdlWindow.get());
  {
    CAutoLock listGuard(&g_windowListLock);
    m_sdlWindow.reset();
  }
  DropEventsOf(windowId);
  if (IsWindow(m_hPlayWnd)) {
    ShowWindow(m_hPlayWnd, SW_SHOW);
    InvalidateRect(m_hPlayWnd, nullptr, TRUE);
  }
  return 1;
}
