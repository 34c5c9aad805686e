// SPDX-License-Identifier: MIT
// D3DDisplayer: its life, and digital zoom and privacy mosaics as the client edits them.
#include "backends/d3d9/d3d_displayer.h"

#include "backends/d3d9/d3d_unreleased.h"
#include "display/fonts.h"

namespace libnivral {

D3DDisplayer::D3DDisplayer() {
  D3DXMatrixIdentity(&m_matHuePre);
  D3DXMatrixIdentity(&m_matHuePost);
  D3DXMatrixIdentity(&m_matColour);
  IconTitleFace(m_szFontFace);
}

D3DDisplayer::~D3DDisplayer() {
  D3DDisplayer::Uninitialize();
  LeaveUnreleased(m_pQuadBuffer);
  LeaveUnreleased(m_pQuadDecl);
  LeaveUnreleased(m_pConstantTable);
  LeaveUnreleased(m_pHslShader);
}

int32_t D3DDisplayer::InitDraw(uint32_t width, uint32_t height, uint32_t) {
  if (IsInitialized()) {
    m_dwWidth = width;
    m_dwHeight = height;
    ResetDisplay();
    return 0;
  }
  return Initialize(width, height) == kOk ? SetupHslShader(width, height) : 1;
}

int32_t D3DDisplayer::FreeDraw() {
  Uninitialize();
  return 0;
}

void D3DDisplayer::SetZoom(uint32_t x, uint32_t y, uint32_t factor) {
  const ZoomState zoom = ZoomTo(Zoom(), GetMirrorMode(), static_cast<int32_t>(x), static_cast<int32_t>(y),
                                static_cast<int32_t>(factor));
  m_nZoomX = zoom.x;
  m_nZoomY = zoom.y;
  m_nZoom = zoom.factor;
}

// In this backend the base's mosaic rectangle holds thousandths of the frame.
MilleRect D3DDisplayer::CurrentMosaic(const MosaicSettings& mosaic) {
  const PixelRect& rect = mosaic.rect;
  return {rect.left, rect.top, rect.right, rect.bottom};
}

void D3DDisplayer::SetCurrentMosaic(const MilleRect& rect) {
  m_settings.Update([&](PaneSettings& s) { s.mosaic.rect = {rect.left, rect.top, rect.right, rect.bottom}; });
}

int32_t D3DDisplayer::SetMosaicRect(const MilleRect* displayed) {
  if (!displayed) return 1;
  if (const auto rect = FrameRectUnder(*displayed, Zoom(), GetMirrorMode())) SetCurrentMosaic(*rect);
  m_bMosaicPending = !displayed->Empty();
  return m_bMosaicPending ? 0 : 1;
}

void D3DDisplayer::UpdateMosaics(uint32_t commit) {
  if (commit) {
    if (m_bMosaicPending) m_mosaicRects.push_back(CurrentMosaic(m_settings.Get(&PaneSettings::mosaic)));
    m_bMosaicPending = false;
    SetCurrentMosaic({});
  } else if (m_nSelectedMosaic != -1) {
    m_mosaicRects.erase(m_mosaicRects.begin() + m_nSelectedMosaic);
    m_nSelectedMosaic = -1;
  }
}

int32_t D3DDisplayer::SetRClickPt(POINT point) {
  if (const auto pick = FramePointUnder({point.x, point.y}, Zoom(), GetMirrorMode())) m_ptMosaicPick = *pick;
  m_nSelectedMosaic = PickMosaic(m_mosaicRects, m_ptMosaicPick);
  return m_nSelectedMosaic == -1 ? 1 : 0;
}

}  // namespace libnivral
