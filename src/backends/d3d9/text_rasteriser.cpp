// SPDX-License-Identifier: MIT
#include "backends/d3d9/text_rasteriser.h"

namespace libnivral {

bool TextPieces::Add(IDirect3DTexture9* texture, const RECT& texels, int32_t x, int32_t y) {
  D3DSURFACE_DESC whole{};
  if (count == pieces.size() || FAILED(texture->GetLevelDesc(0, &whole))) return false;
  texture->AddRef();
  TextPiece& piece = pieces[count++];
  piece.texture.reset(texture);
  const auto width = static_cast<float>(whole.Width);
  const auto height = static_cast<float>(whole.Height);
  piece.left = static_cast<float>(texels.left) / width;
  piece.top = static_cast<float>(texels.top) / height;
  piece.right = static_cast<float>(texels.right) / width;
  piece.bottom = static_cast<float>(texels.bottom) / height;
  piece.place = {x, y, x + static_cast<int32_t>(texels.right - texels.left),
                 y + static_cast<int32_t>(texels.bottom - texels.top)};
  return true;
}

}  // namespace libnivral
