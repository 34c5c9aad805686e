// SPDX-License-Identifier: MIT
// What lies over a picture, in the order in which it is painted: all shapes, then all labels.
#pragma once

#include "display/class_label.h"
#include "display/overlay_types.h"

namespace libnivral {

/// Wide enough for any 32-bit corner grown by any 16-bit width.
struct WideRect {
  int64_t left = 0;
  int64_t top = 0;
  int64_t right = 0;
  int64_t bottom = 0;

  constexpr WideRect Grown(int64_t by) const { return {left - by, top - by, right + by, bottom + by}; }
  constexpr bool operator==(const WideRect&) const = default;
};

struct OverlayShape {
  enum class Kind : uint8_t {
    Fill,      ///< all pixels of `corners`, right and bottom excluded
    Outline,   ///< `size` outlines, the first through `corners`, each other a pixel further inside
    Brackets,  ///< the same, but of every side only one part in `parts` at either end
    Disc,      ///< radius `size`, its middle as far from the corners
  };
  Kind kind = Kind::Fill;
  OverlayColour colour;
  WideRect corners;
  int32_t size = 1;
  int32_t parts = 1;
};

struct OverlayLabel {
  PixelRect area;  ///< what was filled for it
  int32_t x = 0;   ///< where its letters begin
  int32_t y = 0;
  char text[kClassLabelBytes]{};
};

/// For a painter to keep from frame to frame for its memory. What there is no memory for is left out.
struct OverlayList {
  NothrowList<OverlayShape> shapes;
  NothrowList<OverlayLabel> labels;

  void Clear() {
    shapes.clear();
    labels.clear();
  }
};

}  // namespace libnivral
