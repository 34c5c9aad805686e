// SPDX-License-Identifier: MIT
#pragma once

#include "backends/sdl2/sdl_objects.h"
#include "backends/sdl2/sdl_overlay_batch.h"
#include "display/mosaic_layout.h"
#include "util/nothrow_list.h"

namespace libnivral {

/// Covers part of the picture with blocks: one small texture, one texel a block, enlarged without smoothing.
/// The renderer draws the picture into it, a pixel a block; where it cannot, the area is read back instead,
/// which has to wait for all that was drawn. A software renderer cannot: it knows no parts of pixels, and
/// what it has drawn lies in memory anyway.
class SdlMosaic {
 public:
  /// Before anything is drawn on the display, whose size goes with the grid: makes the blocks of the video
  /// and what lies over it.
  void Prepare(SDL_Renderer* renderer, SDL_Texture* video, SdlOverlayBatch& overlays, const MosaicGrid& grid,
               const SDL_Point& display);

  /// Over the finished picture. The area is filled with black when no mosaic can be made: it must not be
  /// seen. False when that fails too.
  bool Draw(SDL_Renderer* renderer, const MosaicGrid& grid);

  /// To be called before the renderer goes.
  void Clear();
  void Forget();

 private:
  bool ReadBack(SDL_Renderer* renderer, const MosaicGrid& grid);

  SdlTexture m_drawn;     ///< blocks that the renderer has drawn
  SdlTexture m_uploaded;  ///< blocks that were read back
  bool m_prepared = false;
  NothrowList<uint32_t> m_source;  ///< the area as it is, row by row
  NothrowList<uint32_t> m_blocks;
};

}  // namespace libnivral
