// SPDX-License-Identifier: MIT
// D3DDisplayer: from the frame's surface to the back buffer.
//
// A device scales the back buffer to the window when it presents, so before that the window's size should not
// matter. Yet some run-times cut what is stretched from a YV12 surface onto the back buffer at the size of
// the window, so that a pane smaller than its frame keeps old or no picture at the right and at the bottom.
// They do not cut what goes through a render target. Whether a device does it is seen from a pixel that lies
// beyond such a window, once, when it first has one.
#include <algorithm>
#include <cstring>

#include "backends/d3d9/d3d_displayer.h"

namespace libnivral {
namespace {

constexpr UINT kProbeSide = 16;
constexpr uint8_t kWhiteLuma = 235;
constexpr uint8_t kBlackLuma = 16;
constexpr uint8_t kNoColour = 128;

void FillGrey(const D3DLOCKED_RECT& locked, uint8_t luma) {
  const Yv12Surface grey{static_cast<uint8_t*>(locked.pBits), locked.Pitch, kProbeSide, kProbeSide};
  for (const auto& [plane, value] :
       {std::pair{grey.Luma(), luma}, {grey.V(), kNoColour}, {grey.U(), kNoColour}}) {
    for (int32_t row = 0; row < plane.height; ++row)
      std::memset(plane.Row(row), value, static_cast<size_t>(plane.width));
  }
}

}  // namespace

void D3DDisplayer::StretchFrame() {
  IDirect3DSurface9* const source = m_pd3dSurface.get();
  if (m_pFrameTarget) {
    m_pd3dDevice->StretchRect(source, nullptr, m_pFrameTarget.get(), nullptr, D3DTEXF_NONE);
    m_pd3dDevice->StretchRect(m_pFrameTarget.get(), nullptr, m_pBackBuffer.get(), nullptr, D3DTEXF_NONE);
  } else {
    m_pd3dDevice->StretchRect(source, nullptr, m_pBackBuffer.get(), nullptr, D3DTEXF_NONE);
  }
}

/// Has a render target ready for as long as the frame must not go straight to the back buffer.
void D3DDisplayer::ChooseStretch() {
  RECT client{};
  if (m_stretch == Stretch::Whole || !GetClientRect(m_d3dpp.hDeviceWindow, &client)) return;
  const bool smaller = static_cast<UINT>(client.right) < m_d3dpp.BackBufferWidth ||
                       static_cast<UINT>(client.bottom) < m_d3dpp.BackBufferHeight;
  if (smaller && m_stretch == Stretch::Unknown)
    m_stretch = IsCornerReached(kWhiteLuma, true) && IsCornerReached(kBlackLuma, false) ? Stretch::Whole
                                                                                        : Stretch::Cut;
  if (!smaller || m_stretch == Stretch::Whole) {
    m_pFrameTarget.reset();
  } else if (!m_pFrameTarget) {
    m_pd3dDevice->CreateRenderTarget(m_dwWidth, m_dwHeight, m_d3dpp.BackBufferFormat, D3DMULTISAMPLE_NONE, 0,
                                     FALSE, m_pFrameTarget.put(), nullptr);
  }
}

/// Stretches a grey surface into the back buffer's last corner and looks whether it is there. A device that
/// cannot be asked counts as doing well.
bool D3DDisplayer::IsCornerReached(uint8_t luma, bool bright) {
  ComPtr<IDirect3DSurface9> grey;
  D3DLOCKED_RECT locked{};
  if (FAILED(m_pd3dDevice->CreateOffscreenPlainSurface(kProbeSide, kProbeSide, kYv12, D3DPOOL_DEFAULT,
                                                       grey.put(), nullptr)) ||
      FAILED(grey->LockRect(&locked, nullptr, 0))) {
    return true;
  }
  FillGrey(locked, luma);
  grey->UnlockRect();
  const auto width = static_cast<LONG>(m_d3dpp.BackBufferWidth);
  const auto height = static_cast<LONG>(m_d3dpp.BackBufferHeight);
  constexpr LONG kSide = kProbeSide;
  const RECT corner{std::max(width - kSide, 0L), std::max(height - kSide, 0L), width, height};
  const RECT last{width - 1, height - 1, width, height};
  m_pd3dDevice->StretchRect(grey.get(), nullptr, m_pBackBuffer.get(), &corner, D3DTEXF_NONE);
  if (FAILED(m_pBackBuffer->LockRect(&locked, &last, D3DLOCK_READONLY))) return true;
  uint16_t pixel = 0;  // in every format of a display the highest bit is that of a colour
  std::memcpy(&pixel, locked.pBits, sizeof(pixel));
  m_pBackBuffer->UnlockRect();
  return (pixel >= 0x8000) == bright;
}

}  // namespace libnivral
