// SPDX-License-Identifier: MIT
#pragma once

#include <d3d9.h>

#include <array>

#include "backends/d3d9/d3d_vertices.h"

namespace libnivral {

/// Vertices that fit the overlay vertex buffer: whole segments and whole pairs of triangles.
constexpr size_t kOverlayVertices = 3072;
static_assert(kOverlayVertices % 6 == 0);

constexpr DWORD kOverlayFvf = D3DFVF_XYZRHW | D3DFVF_DIFFUSE;

/// Gathers vertices of one kind of primitive and draws them through a vertex buffer of kOverlayVertices, full
/// buffer by full buffer and the rest at the end of its life.
class PrimitiveBatch {
 public:
  /// `type` is a line or triangle list. Device and buffer must outlive this.
  PrimitiveBatch(IDirect3DDevice9* device, IDirect3DVertexBuffer9* buffer, D3DPRIMITIVETYPE type)
      : m_device(device), m_buffer(buffer), m_type(type) {}
  ~PrimitiveBatch() { Flush(); }
  PrimitiveBatch(const PrimitiveBatch&) = delete;
  PrimitiveBatch& operator=(const PrimitiveBatch&) = delete;

  void Add(const OverlayVertex& vertex) {
    m_vertices[m_count++] = vertex;
    if (m_count == kOverlayVertices) Flush();
  }
  template <size_t N>
  void Add(const std::array<OverlayVertex, N>& vertices) {
    for (const OverlayVertex& vertex : vertices)
      Add(vertex);
  }
  void Flush();
  bool Empty() const { return m_count == 0; }

 private:
  IDirect3DDevice9* m_device;
  IDirect3DVertexBuffer9* m_buffer;
  D3DPRIMITIVETYPE m_type;
  size_t m_count = 0;
  std::array<OverlayVertex, kOverlayVertices> m_vertices;
};

}  // namespace libnivral
