// SPDX-License-Identifier: MIT
#pragma once

#include "display/mosaic_layout.h"
#include "display/overlay_types.h"
#include "picture/frame_view.h"
#include "util/nothrow_list.h"

namespace libnivral {

/// How a renderer makes colours of samples from 0 to 255: `black` is taken from luma, 128 from chroma.
struct YuvMatrix {
  float black;
  float luma;
  float redFromV;
  float greenFromU;
  float greenFromV;
  float blueFromU;
};

/// A video frame as a renderer stretches it over a whole display.
struct StretchedVideo {
  ConstFrameView planes;  ///< chroma of odd sizes is rounded up
  int32_t width;
  int32_t height;
  int32_t displayWidth;
  int32_t displayHeight;
  YuvMatrix matrix;
  bool smooth;  ///< between four samples; else the nearest
};

/// An opaque colour beneath one of any opacity, both 0xAARRGGBB.
constexpr uint32_t Blend(uint32_t over, uint32_t below) {
  const uint32_t opacity = over >> 24;
  uint32_t blended = 0xFF000000;
  for (const int shift : {0, 8, 16}) {
    const uint32_t upper = over >> shift & 255, lower = below >> shift & 255;
    blended |= (upper * opacity + lower * (255 - opacity) + 127) / 255 << shift;
  }
  return blended;
}

/// The colours of a mosaic's blocks, 0xAARRGGBB, row by row: each that of one pixel of the display, worked out
/// from what a renderer is given to draw there.
class MosaicBlocks {
 public:
  /// False without the memory.
  bool TakeFrom(const StretchedVideo& video, const MosaicGrid& grid);

  /// The same from a picture of the grid's source, rows without gaps.
  bool TakeFrom(const uint32_t* source, const MosaicGrid& grid);

  /// Paints an area of the display with a colour or, where `picture` is not null, with its pixels in that
  /// colour, `pitch` bytes from row to row: one of the two is white.
  void Paint(const PixelRect& area, uint32_t colour, const uint32_t* picture, ptrdiff_t pitch);

  const uint32_t* data() const { return m_colours.data(); }

 private:
  /// The two samples in a row or column that a display pixel lies between.
  struct Sample {
    int32_t first;
    int32_t second;
    int32_t share;  ///< of the second, of 256
  };
  struct Column {
    Sample luma;
    Sample chroma;
  };

  class Row;

  static Sample Find(int32_t pixel, int32_t pixels, int32_t samples, bool smooth);

  bool Reset(const MosaicGrid& grid);

  MosaicGrid m_grid;
  NothrowList<uint32_t> m_colours;
  NothrowList<Column> m_columns;
};

}  // namespace libnivral
