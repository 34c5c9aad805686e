// SPDX-License-Identifier: MIT
#include "backends/d3d9/d3d_shapes.h"

#include <cstring>

namespace libnivral {
namespace {

UINT VerticesPerPrimitive(D3DPRIMITIVETYPE type) {
  return type == D3DPT_LINELIST ? 2 : 3;
}

}  // namespace

void PrimitiveBatch::Flush() {
  const auto count = static_cast<UINT>(m_count);
  m_count = 0;
  const UINT bytes = count * sizeof(OverlayVertex);
  void* memory = nullptr;
  if (count == 0 || FAILED(m_buffer->Lock(0, bytes, &memory, 0))) return;
  std::memcpy(memory, m_vertices.data(), bytes);
  m_buffer->Unlock();
  m_device->SetStreamSource(0, m_buffer, 0, sizeof(OverlayVertex));
  m_device->SetFVF(kOverlayFvf);
  m_device->DrawPrimitive(m_type, 0, count / VerticesPerPrimitive(m_type));
}

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
