// SPDX-License-Identifier: MIT
#include "backends/d3d9/outlines.h"

namespace libnivral {

bool D3dxOutlines::Draw(const PixelRect& rect, uint32_t colour) {
  const auto left = static_cast<float>(rect.left);
  const auto top = static_cast<float>(rect.top);
  const auto right = static_cast<float>(rect.right);
  const auto bottom = static_cast<float>(rect.bottom);
  m_corners[0] = m_corners[4] = {left, top};
  m_corners[1] = {right, top};
  m_corners[2] = {right, bottom};
  m_corners[3] = {left, bottom};
  if (!m_begun && FAILED(m_line->Begin())) return false;
  m_begun = true;
  return SUCCEEDED(m_line->Draw(m_corners, kCorners, colour));
}

void D3dxOutlines::Finish() {
  if (m_begun) m_line->End();
  m_begun = false;
}

bool VertexOutlines::Draw(const PixelRect& rect, uint32_t colour) {
  m_lines.Add(ClosedOutline(rect, colour));
  return true;
}

}  // namespace libnivral
