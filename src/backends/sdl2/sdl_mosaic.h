// SPDX-License-Identifier: MIT
#pragma once

#include "backends/sdl2/sdl_objects.h"
#include "backends/sdl2/sdl_overlay_batch.h"
#include "display/mosaic_blocks.h"

namespace libnivral {

/// Covers part of the picture with blocks: one small texture, one texel a block, enlarged without smoothing.
/// Their colours are worked out from what the renderer is given, because it would have to finish drawing
/// before it could be asked: that is exact but for its own rounding, which has been seen to make three levels
/// of 255. A software renderer has what it has drawn in memory, so there they are read back; so they are too
/// when they cannot be worked out.
class SdlMosaic {
 public:
  /// Takes the blocks of the video, which is in `texture` and stretched over the whole display, in pixels of
  /// which the grid is. The grid may have no blocks.
  void Begin(SDL_Renderer* renderer, SDL_Texture* texture, const ConstFrameView& video,
             const MosaicGrid& grid, const SDL_Point& display);

  /// What is to be painted over the video, in that order.
  void Paint(const SdlSprite& sprite, const PixelRect& target, const SDL_Color& colour);

  /// The part of the display where nothing else needs to be drawn.
  PixelRect Hidden() const { return m_taken ? m_grid.target : PixelRect{}; }

  /// Over the finished picture. The area is filled with black when no mosaic can be made: it must not be
  /// seen. False when that fails too.
  bool Draw(SDL_Renderer* renderer);

  /// To be called before the renderer goes.
  void Clear() { m_texture.reset(); }
  void Forget() { static_cast<void>(m_texture.release()); }

 private:
  bool ReadBack(SDL_Renderer* renderer);
  bool Upload(SDL_Renderer* renderer);

  MosaicGrid m_grid;
  MosaicBlocks m_blocks;
  bool m_taken = false;  ///< the blocks are the frame's
  SdlTexture m_texture;
  NothrowList<uint32_t> m_source;  ///< the area as it is, row by row
};

}  // namespace libnivral
