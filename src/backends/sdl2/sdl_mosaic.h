// SPDX-License-Identifier: MIT
#pragma once

#include "backends/sdl2/sdl_objects.h"
#include "display/mosaic_layout.h"
#include "util/nothrow_list.h"

namespace libnivral {

/// Covers part of the picture with blocks: one small texture, one texel a block, enlarged without smoothing.
class SdlMosaic {
 public:
  /// Area in display pixels, which is filled with black while there is no memory for a mosaic. Whether it was
  /// covered.
  bool Draw(SDL_Renderer* renderer, const MosaicGrid& grid);

  /// To be called before the renderer goes.
  void Clear() { m_texture.reset(); }
  void Forget() { static_cast<void>(m_texture.release()); }

 private:
  bool EnsureTexture(SDL_Renderer* renderer, int32_t columns, int32_t rows);

  SdlTexture m_texture;
  NothrowList<uint32_t> m_source;  ///< the area as it is, row by row
  NothrowList<uint32_t> m_blocks;
};

}  // namespace libnivral
