// SPDX-License-Identifier: MIT
// Digital zoom in thousandths of the frame.
#pragma once

#include <cstdint>

#include "picture/pixel_rect.h"

namespace libnivral {

/// Widest digital zoom.
constexpr int32_t kMaxZoom = 8;

/// The zoomed part of the frame: its top left corner in thousandths, and the factor, 1 to kMaxZoom.
struct ZoomState {
  int32_t x = 0;
  int32_t y = 0;
  int32_t factor = 1;

  bool Enlarges() const { return factor >= 2 && factor <= kMaxZoom; }
  bool operator==(const ZoomState&) const = default;
};

/// Zooms to `factor` around a point of the displayed picture, given in thousandths. Factors below 1 count as
/// 1, which shows the whole frame; 9 and more zoom by 8 where the window stands, and so does a second 8.
ZoomState ZoomTo(const ZoomState& now, uint32_t mirrorMode, int32_t x, int32_t y, int32_t factor);

/// The zoom window in frame pixels. Rounding may put its far edges a pixel or two beyond the frame.
PixelRect ZoomWindow(const ZoomState& zoom, int32_t width, int32_t height);

}  // namespace libnivral
