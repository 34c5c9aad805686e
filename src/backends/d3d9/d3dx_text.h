// SPDX-License-Identifier: MIT
#pragma once

#include <d3dx9.h>

#include "backends/d3d9/text_rasteriser.h"

namespace libnivral {

/// Texts by D3DX: its font lays them out and keeps their letters in textures of its own.
class D3dxTextRasteriser : public TextRasteriser {
 public:
  /// The font must outlive this.
  explicit D3dxTextRasteriser(ID3DXFont* font) : m_font(font) {}

  int32_t Width(const char* text) override;
  bool Make(const char* text, int32_t room, TextPieces& pieces) override;

 private:
  bool HoldsCharacters(const char* text, int32_t room);

  ID3DXFont* m_font;
};

}  // namespace libnivral
