// SPDX-License-Identifier: MIT
// SDLDisplayer: binding to the client's window, sizes, teardown.
#include <SDL.h>

#include "backends/sdl2/sdl_displayer.h"
#include "backends/sdl2/sdl_error.h"
#include "backends/sdl2/sdl_library.h"
#include "util/log_file.h"

namespace {

/// SDL's list of windows has no lock of its own; it is walked by whoever pushes an event.
WindowLock g_windowListLock;

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
  m_events.frameShown = 0;
  m_bound = 0;
  LogStep(L"SDLDisplayer::SetPlayWnd");
  ShowPlayWnd();
  return SetPropA(hwnd, kDisplayerKey, this);
}

void SDLDisplayer::ForgetPlayWnd() {
  if (GetPropA(m_hPlayWnd, kDisplayerKey) == this) RemovePropA(m_hPlayWnd, kDisplayerKey);
}

/// Showing sends messages to the window. Its thread may wait for this pane meanwhile, so other threads do not
/// wait for the answers.
void SDLDisplayer::ShowPlayWnd() const {
  if (IsWindowThread(m_hPlayWnd)) {
    ShowWindow(m_hPlayWnd, SW_SHOW);
  } else {
    ShowWindowAsync(m_hPlayWnd, SW_SHOW);
  }
}

int32_t SDLDisplayer::InitDraw(uint32_t width, uint32_t height, uint32_t) {
  m_events.stopped = 0;
  if (!Bind()) return 1;
  return SetVideoSize(static_cast<int32_t>(width), static_cast<int32_t>(height)) ? 0 : 1;
}

int32_t SDLDisplayer::FreeDraw() {
  m_events.stopped = 1;
  return RequestTeardown() ? 0 : 1;
}

uint32_t SDLDisplayer::Bind() {
  const AutoWindowLock guard(m_lock, m_hPlayWnd);
  if (m_sdlWindow) return 1;
  try {
    if (!IsWindow(m_hPlayWnd)) return 0;
    ShowPlayWnd();
    BaseDisplayer::AdjustWinRect();
    RequestTeardown();
    CreateWindowOnClient();
  } catch (...) {
    CLogFile::GetInstance()->Write(2, L"SDLDisplayer::SetPlayWnd: exception");
    ReportSdlError(2, "SDLDisplayer::SetPlayWnd");
  }
  return m_bound;
}

void SDLDisplayer::CreateWindowOnClient() {
  LogStep(L"SDLDisplayer::SetPlayWnd: SDL_CreateWindowFrom");
  {
    const AutoWindowLock listGuard(g_windowListLock, m_hPlayWnd);
    const WNDPROC client = WindowProcedure(m_hPlayWnd);
    m_sdlWindow.reset(SDL_CreateWindowFrom(m_hPlayWnd));
    if (!m_sdlWindow) return;
    m_hook.emplace(m_hPlayWnd, client, &SDLDisplayer::OnRedraw);
  }
  LogStep(L"SDLDisplayer::SetPlayWnd: SDL_SetWindowData");
  SDL_SetWindowData(m_sdlWindow.get(), kDisplayerKey, this);
  m_sdlRun = SdlRun();
  m_events.window = m_hPlayWnd.load();
  m_events.redrawPosted = false;
  m_registration.emplace(SDL_GetWindowID(m_sdlWindow.get()), m_events, reinterpret_cast<WPARAM>(this));
  AdjustWinRect();
  m_bound = 1;
  ShowPlayWnd();
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
  if (ResetRender()) ResetTexture();
}

bool SDLDisplayer::ResetRender() {
  LogStep(L"SDLDisplayer::ResetRender");
  const AutoWindowLock guard(m_lock, m_hPlayWnd);
  if (m_sdlWindow) {
    const RenderScope scope;
    m_bInitialized = false;
    m_overlays.ReleaseTextures();
    m_sdlTexture.reset();
    m_sdlRenderer.reset();
    m_sdlRenderer.reset(SDL_CreateRenderer(m_sdlWindow.get(), -1, SDL_RENDERER_ACCELERATED));
  }
  if (!m_sdlRenderer) ReportSdlError(1, "SDLDisplayer::ResetRender");
  return m_sdlRenderer != nullptr;
}

bool SDLDisplayer::ResetTexture() {
  LogStep(L"SDLDisplayer::ResetTexture");
  const AutoWindowLock guard(m_lock, m_hPlayWnd);
  if (m_sdlRenderer) {
    const RenderScope scope;
    m_sdlTexture.reset();
    m_sdlTexture.reset(SDL_CreateTexture(m_sdlRenderer.get(), SDL_PIXELFORMAT_YV12,
                                         SDL_TEXTUREACCESS_STREAMING, static_cast<int>(m_dwWidth),
                                         static_cast<int>(m_dwHeight)));
  }
  m_bInitialized = m_sdlTexture != nullptr;
  if (m_sdlTexture) m_deviceGeneration = RenderDeviceGeneration();
  if (!m_sdlTexture) ReportSdlError(1, "SDLDisplayer::ResetTexture");
  return m_sdlTexture != nullptr;
}

void SDLDisplayer::AdjustWinRect() {
  if (m_events.stopped) return;
  LogStep(L"SDLDisplayer::AdjustWinRect");
  const AutoWindowLock guard(m_lock, m_hPlayWnd);
  if (!IsWindow(m_hPlayWnd)) return;
  BaseDisplayer::AdjustWinRect();
  const PixelRect client = m_settings.Get(&PaneSettings::client);
  m_displayRect = {0, 0, client.right - client.left, client.bottom - client.top};
  FitMosaic([](const MosaicSettings& m) { return m.HasFractions(); });
}

// The event goes through SDL for whoever watches SDL's events; what it asks for is done here, right after.
// SDL holds its process-wide lock of event watchers while filters run: making a device in there would keep
// the window's thread, which pushes events too, from answering the driver.
bool SDLDisplayer::PostEvent(uint32_t type, int32_t first, int32_t second) {
  if (!m_sdlWindow || !IsWindow(m_hPlayWnd)) return false;
  SDL_Event event{};
  event.type = type;
  event.window.windowID = SDL_GetWindowID(m_sdlWindow.get());
  event.window.data1 = first;
  event.window.data2 = second;
  const int pushed = PushOwnEvent(event);
  if (pushed != 0) HandleOwnEvent(type, first, second);
  return pushed == 1;
}

void SDLDisplayer::HandleOwnEvent(uint32_t type, int32_t first, int32_t second) {
  if (type == kTeardownEvent) {
    Teardown();
  } else if (!m_events.stopped) {
    AdjustDisplayRect(first, second);
    m_resizePending = 0;
  }
}

uint32_t SDLDisplayer::RequestTeardown() {
  const AutoWindowLock guard(m_lock, m_hPlayWnd);
  if (!m_sdlWindow) return 0;
  if (m_sdlRun == SdlRun() && IsWindowThread(m_hPlayWnd) && PostEvent(kTeardownEvent, 0, 0)) return 1;
  return m_sdlWindow ? Teardown() : 1;
}

uint32_t SDLDisplayer::Teardown() {
  const AutoWindowLock guard(m_lock, m_hPlayWnd);
  m_bound = 0;
  SwitchToThread();
  if (!m_sdlWindow) return 0;
  m_bInitialized = false;
  ReleaseSdlObjects();
  if (IsWindow(m_hPlayWnd)) {
    ShowPlayWnd();
    InvalidateRect(m_hPlayWnd, nullptr, TRUE);
  }
  return 1;
}

void SDLDisplayer::ReleaseSdlObjects() {
  if (m_sdlRun != SdlRun()) {
    // SDL was shut down and has taken them with it.
    m_overlays.ForgetTextures();
    static_cast<void>(m_sdlTexture.release());
    static_cast<void>(m_sdlRenderer.release());
    static_cast<void>(m_sdlWindow.release());
  }
  {
    const RenderScope scope;
    m_overlays.ReleaseTextures();
    m_sdlTexture.reset();
    m_sdlRenderer.reset();
  }
  {
    const AutoWindowLock listGuard(g_windowListLock, m_hPlayWnd);
    if (m_sdlWindow && m_hook) m_hook->RemoveWith(m_sdlWindow);
    m_sdlWindow.reset();
  }
  m_hook.reset();
  m_registration.reset();
}
