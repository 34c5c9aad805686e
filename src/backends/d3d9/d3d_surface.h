// SPDX-License-Identifier: MIT
// A locked YV12 surface as the device lays it out in memory, and copies of frames into it.
#pragma once

#include <cstdint>

#include "backends/d3d9/d3d_zoom.h"
#include "picture/frame_view.h"
#include "picture/pixel_rect.h"

namespace libnivral {

/// One plane of the surface. Chroma rows are half a luma pitch apart, which need not be a whole number, so
/// steps are kept doubled.
struct SurfacePlane {
  uint8_t* first;
  int64_t doubleStep;
  int32_t width;
  int32_t height;

  uint8_t* Row(int64_t row) const { return first + row * doubleStep / 2; }
};

/// Y, then V, then U, in one block of pitch * height * 3 / 2 bytes. Width and height are those of the video.
struct Yv12Surface {
  uint8_t* bits;
  int32_t pitch;
  int32_t width;
  int32_t height;

  SurfacePlane Luma() const { return {bits, int64_t{pitch} * 2, width, height}; }
  SurfacePlane V() const { return {bits + LumaBytes(), pitch, width / 2, height / 2}; }
  SurfacePlane U() const { return {bits + LumaBytes() + LumaBytes() / 4, pitch, width / 2, height / 2}; }

 private:
  int64_t LumaBytes() const { return int64_t{pitch} * height; }
};

// Copies of a frame into a locked surface. A surface may lie in a card's memory, so it is only written, front
// to back, and never read. Negative strides are fine; planes must hold the surface's width and height.

void CopyPlain(const Yv12Surface& surface, const ConstFrameView& frame);

/// The zoom window enlarged to the whole surface, each sample repeated. Where rounding puts the window beyond
/// the frame, the frame's last column or row is repeated.
void CopyZoomed(const Yv12Surface& surface, const ConstFrameView& frame, const ZoomState& zoom);

/// The area in which rows repeat, in luma pixels and the chroma planes' halves of them. Rows between top and
/// bottom, both excluded, are only fresh when `level` divides their number; level 0 counts as 1.
struct MosaicArea {
  PixelRect rect;
  uint32_t level = 1;
};
void CopyWithMosaicArea(const Yv12Surface& surface, const ConstFrameView& frame, const MosaicArea& area);

/// Row strides of a frame in bytes.
struct FrameStrides {
  int32_t y = 0;
  int32_t u = 0;
  int32_t v = 0;

  constexpr bool operator==(const FrameStrides&) const = default;
};

/// Whether a frame's layout differs from that of the last frame shown. The first frame never does, nor does
/// one with a chroma stride below 1.
constexpr bool StridesChanged(const FrameStrides& last, const FrameStrides& now) {
  return last.y >= 1 && now.u >= 1 && now.v >= 1 && now != last;
}

}  // namespace libnivral
