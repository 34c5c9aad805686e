// SPDX-License-Identifier: MIT
#pragma once

#include <d3d9.h>

#include <array>

#include "backends/d3d9/text_rasteriser.h"

namespace libnivral {

/// Gathers pieces of texts and draws those that lie in one texture together; the rest at the end of its life.
class TextBatch {
 public:
  /// The device must outlive this.
  explicit TextBatch(IDirect3DDevice9* device) : m_device(device) {}
  ~TextBatch();
  TextBatch(const TextBatch&) = delete;
  TextBatch& operator=(const TextBatch&) = delete;

  /// At (x, y) of the back buffer, in a 0xAARRGGBB colour. Refers to the texture until it is drawn.
  void Add(const TextPiece& piece, int64_t x, int64_t y, uint32_t colour);

 private:
  struct Vertex {
    float x, y, z, rhw;
    uint32_t colour;
    float u, v;
  };
  static_assert(sizeof(Vertex) == 28);
  static constexpr size_t kVerticesPerPiece = 6;

  void Begin();
  void Flush();

  IDirect3DDevice9* m_device;
  ComPtr<IDirect3DTexture9> m_texture;
  bool m_begun = false;
  size_t m_count = 0;
  std::array<Vertex, 512 * kVerticesPerPiece> m_vertices;
};

}  // namespace libnivral
