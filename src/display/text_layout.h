// SPDX-License-Identifier: MIT
// Where client texts are placed, and how large they are.
#pragma once

#include <algorithm>
#include <optional>

#include "display/overlay_types.h"
#include "display/records.h"

namespace libnivral {

/// Points of SDL's text font for a display of that many pixels; 0 for an empty display.
constexpr int32_t OsdFontSize(int32_t displayHeight) {
  return displayHeight < 1 ? 0 : std::max(displayHeight / 60 * 4, 4);
}

/// Height of the other backends' text fonts.
constexpr int32_t OsdFontHeight(int32_t displayHeight) {
  return displayHeight / 20;
}

/// The anchor of texts whose place counts upward from the bottom of the video.
constexpr uint32_t kFromBottom = 1;

/// In what a backend counts a text's place: pixels of the video, which it maps to the display.
struct TextSpace {
  DisplayMap map;
  /// Texts at a negative place are hidden, else they are cut off.
  bool negativeIsHidden = true;
};

/// Top-left corner of a text and the width at which its lines are broken, in display pixels.
struct OsdPlace {
  int32_t x;
  int32_t y;
  int32_t wrapWidth;
};

/// Nothing for an empty text, a hidden place, and one right of or below the display.
inline std::optional<OsdPlace> PlaceOsdText(const TextItem& item, const TextSpace& space) {
  const DisplayMap& map = space.map;
  int64_t x = static_cast<int32_t>(item.x);
  int64_t y = static_cast<int32_t>(item.y);
  if (item.text[0] == '\0' || (space.negativeIsHidden && (x < 0 || y < 0))) return std::nullopt;
  if (item.anchor == kFromBottom) y = map.videoHeight - y;
  x = map.PixelX(x);
  y = map.PixelY(y);
  if (x >= map.displayWidth || y >= map.displayHeight) return std::nullopt;
  return OsdPlace{SaturateToInt(x), SaturateToInt(y), SaturateToInt(map.displayWidth - x)};
}

}  // namespace libnivral
