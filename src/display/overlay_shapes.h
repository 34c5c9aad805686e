// SPDX-License-Identifier: MIT
// Which pixels the shapes of an overlay list are.
#pragma once

#include <array>

#include "display/overlay_list.h"

namespace libnivral {

/// Appends rectangles within the display that together are the pixels of a shape.
void AppendPixels(RectList& to, const OverlayShape& shape, int32_t width, int32_t height);

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
