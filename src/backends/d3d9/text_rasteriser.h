// SPDX-License-Identifier: MIT
#pragma once

#include <d3d9.h>

#include <array>
#include <cstdint>

#include "display/records.h"
#include "picture/pixel_rect.h"
#include "util/com_ptr.h"

namespace libnivral {

/// Room that no line of text fills.
constexpr int32_t kOneLine = 1 << 20;

constexpr UINT kTextFormat = DT_NOCLIP | DT_WORDBREAK;

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

/// Turns texts of the system's code page into textures, in one font.
class TextRasteriser {
 public:
  TextRasteriser() = default;
  TextRasteriser(const TextRasteriser&) = delete;
  TextRasteriser& operator=(const TextRasteriser&) = delete;
  virtual ~TextRasteriser() = default;

  /// Pixels that the text is wide when lines end where it says so and nowhere else; below 0 when it failed.
  virtual int32_t Width(const char* text) = 0;

  /// The pieces of a text on lines of at most `room` pixels, broken between words. False when it failed.
  virtual bool Make(const char* text, int32_t room, TextPieces& pieces) = 0;
};

}  // namespace libnivral
