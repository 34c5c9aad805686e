// SPDX-License-Identifier: MIT
// SDLDisplayer: binding to the client's window, sizes, teardown.
#include <SDL.h>

#include "backends/sdl2/sdl_displayer.h"
#include "backends/sdl2/sdl_error.h"
#include "backends/sdl2/sdl_library.h"
#include "util/log_file.h"

namespace libnivral {

SDLDisplayer::Guard::Guard(SDLDisplayer& pane, HWND newWindow)
    : m_pane(pane), m_held(pane.m_lock.Lock(pane.WaitMode(newWindow))) {
  if (m_held) m_pane.DoRequests();
}

SDLDisplayer::Guard::~Guard() {
  if (!m_held) return;
  m_pane.m_lock.Unlock();
  while (m_pane.m_requests.Any() && m_pane.m_lock.TryLock()) {
    m_pane.DoRequests();
    m_pane.m_lock.Unlock();
  }
}

SDLDisplayer::SDLDisplayer() : m_hEvent(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
}

SDLDisplayer::~SDLDisplayer() {
  const AutoWindowLock guard = m_lock.LockForDestruction(WaitMode());
  RequestTeardown();
  ForgetPlayWnd();
}

Wait SDLDisplayer::WaitMode(HWND newWindow) const {
  const bool owner =
      IsWindowThread(m_hPlayWnd) || IsWindowThread(m_events.window) || IsWindowThread(newWindow);
  return owner ? Wait::AnsweringMessages : Wait::Plainly;
}

template <class Work, class Request>
int32_t SDLDisplayer::WithLock(HWND newWindow, Work&& work, Request&& request) {
  if (const Guard guard(*this, newWindow); guard) return work();
  request();
  // Whoever is working on the pane may have left before it could see the request.
  const Guard late(*this, newWindow);
  return 1;
}

void SDLDisplayer::DoRequests() {
  if (!m_requests.Any()) return;
  const PaneRequests::Batch batch = m_requests.Take();
  if (batch.free) RequestTeardown();
  if (batch.window) TakePlayWnd(*batch.window);
  if (batch.size) TakeSize(*batch.size);
}

void SDLDisplayer::LogOnce(Problem problem, const wchar_t* text) {
  const auto bit = static_cast<uint32_t>(problem);
  if ((m_logged.fetch_or(bit) & bit) == 0) CLogFile::GetInstance()->Write(2, L"%ls", text);
}

int32_t SDLDisplayer::SetPlayWnd(HWND hwnd) {
  return WithLock(
      hwnd, [&] { return TakePlayWnd(hwnd); }, [&] { m_requests.RequestWindow(hwnd); });
}

int32_t SDLDisplayer::TakePlayWnd(HWND hwnd) {
  ForgetPlayWnd();
  BaseDisplayer::SetPlayWnd(hwnd);
  m_events.frameShown = false;
  m_bound = false;
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
  m_events.stopped = false;
  // Whatever becomes of this call, frames are of the new size from now on.
  if (width > 0 && height > 0) BaseDisplayer::InitDraw(width, height, 0);
  const VideoSize size{static_cast<int32_t>(width), static_cast<int32_t>(height)};
  return WithLock(
      nullptr, [&] { return TakeSize(size); }, [&] { m_requests.RequestSize(size); });
}

int32_t SDLDisplayer::TakeSize(VideoSize size) {
  return Bind() && SetVideoSize(size) ? 0 : 1;
}

int32_t SDLDisplayer::FreeDraw() {
  m_events.stopped = true;
  return WithLock(
      nullptr, [&] { return RequestTeardown() ? 0 : 1; }, [&] { m_requests.RequestFree(); });
}

bool SDLDisplayer::Bind() {
  if (m_sdlWindow && SdlHasGone()) Teardown();
  if (m_sdlWindow) return true;
  try {
    if (!IsWindow(m_hPlayWnd)) {
      LogOnce(Problem::NoWindow, L"SDLDisplayer::SetPlayWnd: NIVRAL_DWInitDraw without a window");
      return false;
    }
    ShowPlayWnd();
    CreateWindowOnClient();
  } catch (...) {
    CLogFile::GetInstance()->Write(2, L"SDLDisplayer::SetPlayWnd: exception");
    WriteSdlError(2, "SDLDisplayer::SetPlayWnd");
  }
  return m_bound;
}

void SDLDisplayer::CreateWindowOnClient() {
  LogStep(L"SDLDisplayer::SetPlayWnd: SDL_CreateWindowFrom");
  {
    const AutoWindowLock listGuard(SdlWindowList(), WaitMode());
    const WNDPROC client = WindowProcedure(m_hPlayWnd);
    m_sdlWindow.reset(SDL_CreateWindowFrom(m_hPlayWnd));
    if (!m_sdlWindow) {
      if (SDL_WasInit(SDL_INIT_VIDEO)) {
        LogOnce(Problem::NoWindow, L"SDLDisplayer::SetPlayWnd: SDL cannot use the window");
      } else {
        LogOnce(Problem::SdlNotStarted,
                L"SDLDisplayer::SetPlayWnd: SDL is not running, call NIVRAL_InitializeEx(1) first");
      }
      return;
    }
    m_hook.emplace(m_hPlayWnd, client, &SDLDisplayer::OnRedraw);
  }
  LogStep(L"SDLDisplayer::SetPlayWnd: SDL_SetWindowData");
  SDL_SetWindowData(m_sdlWindow.get(), kDisplayerKey, this);
  m_sdlRun = SdlRun();
  m_events.window = m_hPlayWnd.load();
  m_events.redrawPosted = false;
  m_registration.emplace(SDL_GetWindowID(m_sdlWindow.get()), m_events, reinterpret_cast<WPARAM>(this));
  AdjustWinRect();
  m_bound = true;
  ShowPlayWnd();
}

bool SDLDisplayer::SetVideoSize(VideoSize size) {
  CLogFile::GetInstance()->Write(1, L"SDLDisplayer::SetVideoSize(dwWidth=%d, dwHeight=%d)", size.width,
                                 size.height);
  if (!m_sdlWindow) return false;
  const bool complete = m_sdlRenderer && m_sdlTexture;
  const bool newSize = size.width > 0 && size.height > 0 && size != m_textureSize;
  if (complete && !newSize) return false;
  m_resizePending = true;
  return PostEvent(kSizeChangeEvent, size);
}

void SDLDisplayer::AdjustDisplayRect(VideoSize size) {
  CLogFile::GetInstance()->Write(1, L"SDLDisplayer::AdjustDisplayRect(%d,%d)", size.width, size.height);
  BaseDisplayer::InitDraw(static_cast<uint32_t>(size.width), static_cast<uint32_t>(size.height), 0);
  m_textureSize = size;
  if (ResetRender()) ResetTexture();
}

bool SDLDisplayer::ResetRender() {
  LogStep(L"SDLDisplayer::ResetRender");
  if (m_sdlWindow) {
    const RenderScope scope;
    m_bInitialized = false;
    m_overlays.ReleaseTextures();
    m_sdlTexture.reset();
    m_sdlRenderer.reset();
    m_sdlRenderer.reset(SDL_CreateRenderer(m_sdlWindow.get(), -1, SDL_RENDERER_ACCELERATED));
  }
  if (!m_sdlRenderer) {
    g_sdlErrors.Failed("SDLDisplayer::ResetRender");
    LogOnce(Problem::NoRenderer, L"SDLDisplayer::ResetRender: no renderer, the pane shows nothing");
  }
  return m_sdlRenderer != nullptr;
}

bool SDLDisplayer::ResetTexture() {
  LogStep(L"SDLDisplayer::ResetTexture");
  if (m_sdlRenderer) {
    const RenderScope scope;
    m_sdlTexture.reset();
    m_sdlTexture.reset(SDL_CreateTexture(m_sdlRenderer.get(), SDL_PIXELFORMAT_YV12,
                                         SDL_TEXTUREACCESS_STREAMING, m_textureSize.width,
                                         m_textureSize.height));
  }
  m_bInitialized = m_sdlTexture != nullptr;
  if (m_sdlTexture) m_deviceGeneration = RenderDeviceGeneration();
  if (!m_sdlTexture) {
    g_sdlErrors.Failed("SDLDisplayer::ResetTexture");
    LogOnce(Problem::NoRenderer, L"SDLDisplayer::ResetTexture: no texture of the video's size");
  }
  return m_sdlTexture != nullptr;
}

void SDLDisplayer::AdjustWinRect() {
  if (m_events.stopped) return;
  LogStep(L"SDLDisplayer::AdjustWinRect");
  RECT client{};
  if (!IsWindow(m_hPlayWnd) || !GetClientRect(m_hPlayWnd, &client)) return;
  BaseDisplayer::AdjustWinRect();
  m_displaySize = {client.right - client.left, client.bottom - client.top};
  FitMosaic([](const MosaicSettings& m) { return m.HasFractions(); });
}

// The event goes through SDL for whoever watches SDL's events; what it asks for is done here, right after.
// SDL holds its process-wide lock of event watchers while filters run: making a device in there would keep
// the window's thread, which pushes events too, from answering the driver.
bool SDLDisplayer::PostEvent(uint32_t type, VideoSize size) {
  if (!m_sdlWindow || !IsWindow(m_hPlayWnd)) return false;
  SDL_Event event{};
  event.type = type;
  event.window.windowID = SDL_GetWindowID(m_sdlWindow.get());
  event.window.data1 = size.width;
  event.window.data2 = size.height;
  int pushed = 0;
  {
    const AutoWindowLock listGuard(SdlWindowList(), WaitMode());
    pushed = PushOwnEvent(event);
  }
  if (pushed != 0) HandleOwnEvent(type, size);
  return pushed == 1;
}

void SDLDisplayer::HandleOwnEvent(uint32_t type, VideoSize size) {
  if (type == kTeardownEvent) {
    Teardown();
  } else if (!m_events.stopped) {
    AdjustDisplayRect(size);
    m_resizePending = false;
  }
}

bool SDLDisplayer::RequestTeardown() {
  if (!m_sdlWindow) return false;
  if (!SdlHasGone() && IsWindowThread(m_hPlayWnd) && PostEvent(kTeardownEvent, {})) return true;
  return !m_sdlWindow || Teardown();
}

bool SDLDisplayer::Teardown() {
  m_bound = false;
  SwitchToThread();
  if (!m_sdlWindow) return false;
  m_bInitialized = false;
  if (SdlHasGone()) {
    ForgetSdlObjects();
  } else {
    ReleaseSdlObjects();
  }
  m_hook.reset();
  m_registration.reset();
  m_events.window = nullptr;
  if (IsWindow(m_hPlayWnd)) {
    ShowPlayWnd();
    InvalidateRect(m_hPlayWnd, nullptr, TRUE);
  }
  return true;
}

/// SDL was shut down and has taken them with it.
void SDLDisplayer::ForgetSdlObjects() {
  m_overlays.ForgetTextures();
  static_cast<void>(m_sdlTexture.release());
  static_cast<void>(m_sdlRenderer.release());
  static_cast<void>(m_sdlWindow.release());
}

void SDLDisplayer::ReleaseSdlObjects() {
  {
    const RenderScope scope;
    m_overlays.ReleaseTextures();
    m_sdlTexture.reset();
    m_sdlRenderer.reset();
  }
  const AutoWindowLock listGuard(SdlWindowList(), WaitMode());
  if (m_hook) m_hook->RemoveWith(m_sdlWindow);
  m_sdlWindow.reset();
}

}  // namespace libnivral
