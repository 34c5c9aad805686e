// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <optional>

#include "display/records.h"

/// Points of the text font for a display of that many pixels; 0 for an empty display.
constexpr int32_t OsdFontSize(int32_t displayHeight) {
  return displayHeight < 1 ? 0 : std::max(displayHeight / 60 * 4, 4);
}

/// Top-left corner of a text and the width at which its lines are broken, in display pixels.
struct OsdPlace {
  int32_t x;
  int32_t y;
  int32_t wrapWidth;
};

/// Nothing for an empty text, a negative position, and a place right of or below the display.
std::optional<OsdPlace> PlaceOsdText(const TextItem& item, int32_t displayWidth, int32_t displayHeight);
