// SPDX-License-Identifier: MIT
// SDLDisplayer: the road of a frame to the screen.
#include <SDL.h>

#include "backends/sdl2/sdl_displayer.h"
#include "backends/sdl2/sdl_error.h"
#include "backends/sdl2/sdl_library.h"

namespace libnivral {
namespace {

constexpr uint32_t kPlanarYuv420 = 3;

}  // namespace

int32_t SDLDisplayer::DisplayFrame(const FrameView& frame, const PaneSettings& settings, uint32_t,
                                   int64_t param2) {
  if ((!m_bound || m_resizePending) && !m_requests.Any()) {
    DropOverlays();
    return 1;
  }
  m_lock.YieldToWindowThread();
  VideoSize size;
  const std::optional<int32_t> result = DrawLocked(frame, settings.mosaic, size);
  if (!result) return 1;
  if (const auto& callback = settings.decodeCB; callback.function) {
    callback.function(frame.y, static_cast<uint32_t>(frame.strideY), static_cast<uint32_t>(size.width),
                      static_cast<uint32_t>(size.height), param2, kPlanarYuv420, callback.user);
  }
  return *result;
}

/// Nothing for a frame that is not even tried.
std::optional<int32_t> SDLDisplayer::DrawLocked(const FrameView& frame, const MosaicSettings& mosaic,
                                                VideoSize& size) {
  const Guard guard(*this);
  if (!guard) {
    DropOverlays();
    return std::nullopt;
  }
  CatchUpWithWindow();
  if (m_resizePending || !IsReady()) {
    DrawAlgInfo();
    AdvanceOverlays();
    return std::nullopt;
  }
  size = m_textureSize;
  const bool presented = Present(frame, mosaic);
  if (presented) return 0;
  g_sdlFrameErrors.Failed("SDLDisplayer::DisplayFrame");
  return 1;
}

void SDLDisplayer::SetOSDText(int32_t index, const char* text, uint32_t x, uint32_t y, uint32_t anchor,
                              uint32_t colour) {
  BaseDisplayer::SetOSDText(index, text, x, y, anchor, colour);
}

bool SDLDisplayer::IsReady() const {
  if (!m_bound || SdlHasGone() || !IsWindow(m_hPlayWnd) || !IsWindowVisible(m_hPlayWnd)) return false;
  if (!m_sdlWindow || !m_sdlTexture || !m_sdlRenderer) return false;
  int width = 0;
  int height = 0;
  // A texture that cannot be asked counts as ready.
  if (SDL_QueryTexture(m_sdlTexture.get(), nullptr, nullptr, &width, &height) != 0) return true;
  return static_cast<uint32_t>(width) == m_dwWidth && static_cast<uint32_t>(height) == m_dwHeight;
}

/// Tells the renderer what happened to its window or device since the last frame.
void SDLDisplayer::CatchUpWithWindow() {
  if (!m_sdlWindow || SdlHasGone()) return;
  if (m_deviceGeneration != RenderDeviceGeneration()) RebuildLostDevice();
  if (m_sdlRenderer && m_events.windowSizeChanged.exchange(false)) {
    const RenderScope scope;
    const AutoWindowLock listGuard(SdlWindowList(), WaitMode());
    PassOnSizeChange(m_sdlWindow.get());
  }
}

void SDLDisplayer::RebuildLostDevice() {
  const ULONGLONG now = GetTickCount64();
  if (now - m_lastRebuild < kErrorIntervalMs) return;
  m_lastRebuild = now;
  if (ResetRender()) ResetTexture();
}

bool SDLDisplayer::Present(const FrameView& frame, const MosaicSettings& mosaic) {
  const RenderScope scope;
  SDL_Renderer* renderer = m_sdlRenderer.get();
  if (!Upload(frame)) {
    AdvanceOverlays();
    return false;
  }
  m_overlays.BeginFrame(renderer, Map().displayWidth);
  AddTexts();
  DrawOverlays();
  SDL_Point display{};
  const std::optional<MosaicGrid> grid = LayOutMosaic(mosaic, display);
  if (grid) m_overlays.PrepareMosaic(renderer, m_sdlTexture.get(), *grid, display);
  const bool drawn = grid && SDL_RenderClear(renderer) == 0 &&
                     SDL_RenderCopy(renderer, m_sdlTexture.get(), nullptr, nullptr) == 0 &&
                     m_overlays.Draw(renderer, *grid);
  if (drawn) {
    m_events.frameShown = true;
    SDL_RenderPresent(renderer);
  }
  m_overlays.EndFrame();
  return drawn;
}

bool SDLDisplayer::Upload(const FrameView& frame) {
  const auto planes = m_padder.PadChroma(frame, m_textureSize.width, m_textureSize.height);
  if (!planes) {
    SDL_SetError("the frame's planes do not fit the video size");
    return false;
  }
  return SDL_UpdateYUVTexture(m_sdlTexture.get(), nullptr, planes->y, planes->strideY, planes->u,
                              planes->strideU, planes->v, planes->strideV) == 0;
}

DisplayMap SDLDisplayer::Map() const {
  const VideoSize display = m_displaySize;
  return {m_textureSize.width, m_textureSize.height, display.width, display.height};
}

void SDLDisplayer::AddTexts() {
  SdlOverlays::TextItems items;
  {
    CAutoLock guard(&m_textLock);
    items = m_textItems;
  }
  m_overlays.AddTexts(items, Map());
}

/// The picture fills the target by itself, so a mosaic of fractions is not left where the window was. Nothing
/// when nobody knows where to put it: such a frame must not be shown.
std::optional<MosaicGrid> SDLDisplayer::LayOutMosaic(const MosaicSettings& mosaic, SDL_Point& display) const {
  if (!mosaic.flag) return MosaicGrid{};
  if (SDL_GetRendererOutputSize(m_sdlRenderer.get(), &display.x, &display.y) != 0) return std::nullopt;
  MosaicSettings fitted = mosaic;
  if (fitted.fromFractions) fitted.FitTo(display.x, display.y);
  return LayoutMosaic(fitted.rect, MosaicBlockSize(mosaic.level), display.x, display.y);
}

void SDLDisplayer::PaintRecord(RecordView record) {
  m_overlays.AddRecord(record, Map());
}

void SDLDisplayer::DrawAlgInfo() {
  if (m_alg.shown) PaintRecord(&m_alg.record);
}

void SDLDisplayer::DrawDsmAlgInfo() {
  if (m_dsm.shown) PaintRecord(&m_dsm.record);
}

void SDLDisplayer::OnRedraw(HWND hwnd, WPARAM pane) {
  auto* displayer = static_cast<SDLDisplayer*>(GetPropA(hwnd, kDisplayerKey));
  // The pane may have been closed or given another window meanwhile.
  if (reinterpret_cast<WPARAM>(displayer) == pane) displayer->CallFlashCallback();
}

void SDLDisplayer::CallFlashCallback() {
  m_events.redrawPosted = false;
  RECT client{};
  if (!m_events.WantsFlash() || !GetClientRect(m_hPlayWnd, &client)) return;
  if (const auto callback = m_settings.Get(&PaneSettings::flashWndCB); callback.function) {
    callback.function(callback.user, m_hPlayWnd, client.right - client.left, client.bottom - client.top);
  }
}

}  // namespace libnivral
