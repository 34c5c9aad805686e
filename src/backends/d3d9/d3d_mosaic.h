// SPDX-License-Identifier: MIT
// Privacy mosaics in thousandths of the frame: from the displayed picture to the frame and back to pixels.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "backends/d3d9/d3d_surface.h"
#include "backends/d3d9/d3d_zoom.h"
#include "picture/frame_view.h"
#include "picture/pixel_rect.h"

namespace libnivral {

/// Thousandths of the frame. Clients may store any values.
struct MilleRect {
  int32_t left = 0;
  int32_t top = 0;
  int32_t right = 0;
  int32_t bottom = 0;

  constexpr bool Empty() const { return right <= left || bottom <= top; }
  constexpr bool operator==(const MilleRect&) const = default;
};

struct MillePoint {
  int32_t x = 0;
  int32_t y = 0;

  constexpr bool operator==(const MillePoint&) const = default;
};

/// The part of the frame under a rectangle of the displayed picture, within 0..1000; nothing for an unknown
/// mirror mode or zoom.
std::optional<MilleRect> FrameRectUnder(const MilleRect& displayed, const ZoomState& zoom,
                                        uint32_t mirrorMode);
std::optional<MillePoint> FramePointUnder(const MillePoint& displayed, const ZoomState& zoom,
                                          uint32_t mirrorMode);

/// Index of the first mosaic over a frame point, or -1.
int32_t PickMosaic(std::span<const MilleRect> mosaics, const MillePoint& point);

/// Where a mosaic lies on the surface, which holds the mirrored and zoomed picture. Clipped to the surface
/// and empty when the zoom window does not touch the mosaic.
PixelRect MosaicOnSurface(const MilleRect& mosaic, const ZoomState& zoom, uint32_t mirrorMode, int32_t width,
                          int32_t height);

/// Source samples on a side of a mosaic block; on the surface a block is this times the zoom factor.
constexpr int32_t kMosaicBlock = 16;

/// Replaces the luma of `area`, which lies on the surface, by one sample per block. Samples come from the
/// frame, not from the surface; chroma stays. Mirrored pictures count blocks from the window's far edges.
void PixelateLuma(const Yv12Surface& surface, const ConstFrameView& frame, const PixelRect& area,
                  const ZoomState& zoom, uint32_t mirrorMode);

}  // namespace libnivral
