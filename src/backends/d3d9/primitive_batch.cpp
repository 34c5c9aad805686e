// SPDX-License-Identifier: MIT
#include "backends/d3d9/primitive_batch.h"

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

}  // namespace libnivral
