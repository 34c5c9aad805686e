// SPDX-License-Identifier: MIT
// What lies over a picture, in the order in which it is painted: all shapes, then all labels; and which
// pixels the shapes are.
#pragma once

#include <array>
#include <cstddef>

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
  PixelRect area;    ///< what was filled for it
  size_t shape = 0;  ///< by which of the list's shapes
  int32_t x = 0;     ///< where its letters begin
  int32_t y = 0;
  char text[64]{};
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

/// Appends rectangles within the display that together are the pixels of a shape.
void AppendPixels(RectList& to, const OverlayShape& shape, int32_t width, int32_t height);

/// Whether a fill or an outline may have a pixel in an area.
bool MayTouch(const OverlayShape& shape, const PixelRect& area);

/// Whether a disc covers a whole display.
bool DiscCovers(const OverlayShape& disc, int32_t width, int32_t height);

/// Whether any side of a rectangle can be seen on a display. Saves the work on the thousands of unseen lines
/// that a huge line width asks for.
bool SidesVisible(const WideRect& corners, int32_t width, int32_t height);

/// A straight line with both ends.
struct Stroke {
  int64_t x1, y1, x2, y2;
};

/// The arms at the corners, one part in `parts` of a side, rounded down.
std::array<Stroke, 8> BracketStrokes(const WideRect& corners, int32_t parts);

}  // namespace libnivral
