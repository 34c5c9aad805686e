// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

#include "picture/pixel_rect.h"

namespace libnivral {

/// Side of a mosaic block in pixels; 0 for levels at which nothing is drawn. Levels 1 to 4 count threefold,
/// 5, 10, 20, 30 and 50 stand for 1 to 5, and any other counts as it is. Limited to more than any display.
int32_t MosaicBlockSize(uint32_t level);

/// A picture with a pixel for each block, in one direction: which of its pixels show what.
struct BlockAxis {
  float start;  ///< of the first block on the display
  float block;
  float count;

  /// Display pixels to blocks: the middle of a block's first pixel becomes the block's middle.
  constexpr float ToBlocks(float pixel) const { return (pixel - start - 0.5f) / block + 0.5f; }
  constexpr float ToPixels(float blocks) const { return (blocks - 0.5f) * block + start + 0.5f; }
  /// Whether anything between two display pixels may show.
  constexpr bool Meets(float from, float to) const { return ToBlocks(to) > 0 && ToBlocks(from) < count; }
};

/// Blocks of a mosaic that reach into a display, in display pixels. Blocks at the right and bottom of the
/// area are whole, so they may reach past it by up to block - 1 pixels.
struct MosaicGrid {
  int32_t block = 0;
  int32_t columns = 0;
  int32_t rows = 0;
  PixelRect target;  ///< all blocks together
  PixelRect source;  ///< the area, cut to the display: where the blocks take their colours

  /// The pixel, counted from the corner of `source`, whose colour a block takes: its own top-left, or the
  /// nearest one on the display.
  int32_t SourceX(int32_t column) const;
  int32_t SourceY(int32_t row) const;

  /// Blocks that begin off the display take the colours of its edge, which these do not give.
  BlockAxis AxisX() const { return Axis(target.left, columns); }
  BlockAxis AxisY() const { return Axis(target.top, rows); }

 private:
  BlockAxis Axis(int32_t start, int32_t count) const {
    return {static_cast<float>(start), static_cast<float>(block), static_cast<float>(count)};
  }
};

/// Without rows and columns when nothing of the area is on the display.
MosaicGrid LayoutMosaic(const PixelRect& area, int32_t block, int32_t displayWidth, int32_t displayHeight);

/// Fills every block of a mosaic with its first pixel's colour, in a picture of `width` x `height` pixels of
/// 2 to 4 bytes in memory. Blocks that reach out of the picture are cut.
void FillBlocks(uint8_t* pixels, ptrdiff_t pitch, int32_t bytesPerPixel, int32_t width, int32_t height,
                const MosaicGrid& grid);

}  // namespace libnivral
