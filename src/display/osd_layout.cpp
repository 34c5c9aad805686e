// SPDX-License-Identifier: MIT
#include "display/osd_layout.h"

namespace libnivral {
namespace {

constexpr uint32_t kFromBottom = 1;

}  // namespace

std::optional<OsdPlace> PlaceOsdText(const TextItem& item, const TextSpace& space) {
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
