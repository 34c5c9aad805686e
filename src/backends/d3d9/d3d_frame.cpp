// SPDX-License-Identifier: MIT
// D3DDisplayer: the road of a frame to the screen.
#include "backends/d3d9/d3d_displayer.h"
#include "backends/d3d9/d3d_mosaic.h"
#include "picture/pixel_rect.h"
#include "util/log_file.h"

namespace libnivral {

int32_t D3DDisplayer::DisplayFrame(const FrameView& frame, const PaneSettings& settings, uint32_t, int64_t) {
  const int32_t result = DrawFrame(frame, settings);
  if (result != kOk) AdvanceOverlays();
  return result;
}

int32_t D3DDisplayer::DrawFrame(const FrameView& frame, const PaneSettings& settings) {
  if (!IsInitialized() && Initialize(m_dwWidth, m_dwHeight) != kOk) {
    LogStep(L"D3DDisplayer::Display: !IsInitialized()");
    return kNotInitialised;
  }
  if (!IsDeviceReady()) return kFailed;

  const FrameStrides last{m_nLastStrideY, m_nLastStrideU, m_nLastStrideV};
  const bool changed = StridesChanged(last, {frame.strideY, frame.strideU, frame.strideV});
  if (changed) {
    ResetDisplay();
    m_nLastStrideY = frame.strideY;
    m_nLastStrideU = frame.strideU;
    m_nLastStrideV = frame.strideV;
    return kFailed;
  }
  if (!Upload(frame, settings)) return kFailed;
  DrawScene();
  return kOk;
}

bool D3DDisplayer::IsDeviceReady() {
  const HRESULT state = m_pd3dDevice ? m_pd3dDevice->TestCooperativeLevel() : D3D_OK;
  if (state == D3DERR_DEVICENOTRESET) {
    LogStep(L"D3DDisplayer::Display: hrErrCode=D3DERR_DEVICENOTRESET");
    ResetDisplay();
  } else if (state == D3DERR_DEVICELOST) {
    LogStep(L"D3DDisplayer::Display: hrErrCode=D3DERR_DEVICELOST");
  } else if (state != D3D_OK) {
    CLogFile::GetInstance()->Write(1, L"D3DDisplayer::Display: hrErrCode=%d", static_cast<int>(state));
  } else if (!m_pd3dSurface || !m_pBackBuffer) {
    ResetDisplay();
    LogStep(L"D3DDisplayer::NotifyReplay: NULL == m_pd3dSurface || NULL == m_pBackBuffer");
  } else {
    return true;
  }
  return false;
}

/// One lock per frame. A frame whose planes cannot hold the video size is refused before it.
bool D3DDisplayer::Upload(const FrameView& frame, const PaneSettings& settings) {
  const FrameSize size = Frame();
  if (!HoldsFrame(frame, size.width, size.height)) return false;
  D3DLOCKED_RECT locked{};
  if (FAILED(m_pd3dSurface->LockRect(&locked, nullptr, D3DLOCK_NOSYSLOCK | D3DLOCK_NO_DIRTY_UPDATE)))
    return false;
  m_nLastStrideY = frame.strideY;
  m_nLastStrideU = frame.strideU;
  m_nLastStrideV = frame.strideV;
  const Yv12Surface surface{static_cast<uint8_t*>(locked.pBits), locked.Pitch, size.width, size.height};
  CopyFrame(surface, frame, settings.mosaic);
  DrawMosaics(surface, frame, settings);
  return SUCCEEDED(m_pd3dSurface->UnlockRect());
}

void D3DDisplayer::CopyFrame(const Yv12Surface& surface, const FrameView& frame,
                             const MosaicSettings& mosaic) const {
  if (Zoom().Enlarges()) {
    CopyZoomed(surface, frame, Zoom());
  } else if (mosaic.flag) {
    const PixelRect area{ScaleEdge(surface.width, mosaic.left), ScaleEdge(surface.height, mosaic.top),
                         ScaleEdge(surface.width, mosaic.right), ScaleEdge(surface.height, mosaic.bottom)};
    CopyWithMosaicArea(surface, frame, {area, mosaic.level});
  } else {
    CopyPlain(surface, frame);
  }
}

void D3DDisplayer::DrawMosaics(const Yv12Surface& surface, const FrameView& frame,
                               const PaneSettings& settings) const {
  const auto draw = [&](const MilleRect& mosaic) {
    const uint32_t mirror = settings.mirrorMode;
    const PixelRect area = MosaicOnSurface(mosaic, Zoom(), mirror, surface.width, surface.height);
    PixelateLuma(surface, frame, area, Zoom(), mirror);
  };
  if (m_bMosaicPending) draw(CurrentMosaic(settings.mosaic));
  for (const MilleRect& mosaic : m_mosaicRects)
    draw(mosaic);
}

void D3DDisplayer::DrawScene() {
  ChooseStretch();
  m_pd3dDevice->BeginScene();
  StretchFrame();
  DrawOSDText();
  DrawOverlays();
  m_pd3dDevice->EndScene();
  m_pd3dDevice->Present(nullptr, nullptr, nullptr, nullptr);
}

}  // namespace libnivral
