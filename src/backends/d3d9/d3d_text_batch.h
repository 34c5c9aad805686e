// SPDX-License-Identifier: MIT
// Texts as parts of textures, and how they are drawn.
#pragma once

#include <d3d9.h>

#include <array>
#include <cstddef>
#include <cstdint>

#include "display/records.h"
#include "picture/pixel_rect.h"
#include "util/com_ptr.h"

namespace libnivral {

/// A part of a text as it lies in a texture, whose alpha is the coverage of white letters.
struct TextPiece {
  ComPtr<IDirect3DTexture9> texture;
  float left, top, right, bottom;  ///< in the texture, 0 to 1
  PixelRect place;                 ///< in pixels from the text's upper left corner
};

/// What a text is made of: not more pieces than it may have characters.
struct TextPieces {
  size_t count = 0;
  std::array<TextPiece, sizeof(TextItem::text)> pieces;

  /// Adds a part of a texture of which it takes a reference. False when there is no place left.
  bool Add(IDirect3DTexture9* texture, const RECT& texels, int32_t x, int32_t y);
};

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
