// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "backends/sdl2/sdl_objects.h"
#include "display/mosaic_layout.h"

/// Covers part of the picture with blocks: one small texture, one texel a block, enlarged without smoothing.
class SdlMosaic {
 public:
  /// Area in display pixels. Whether a mosaic was drawn.
  bool Draw(SDL_Renderer* renderer, const MosaicGrid& grid);

  /// To be called before the renderer goes.
  void Clear() { m_texture.reset(); }
  void Forget() { static_cast<void>(m_texture.release()); }

 private:
  bool EnsureTexture(SDL_Renderer* renderer, int32_t columns, int32_t rows);

  SdlTexture m_texture;
  std::vector<uint32_t> m_source;  ///< the area as it is, row by row
  std::vector<uint32_t> m_blocks;
};
