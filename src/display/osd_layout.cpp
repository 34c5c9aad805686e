// SPDX-License-Identifier: MIT
#include "display/osd_layout.h"

namespace {

constexpr uint32_t kFromBottom = 1;

}  // namespace

std::optional<OsdPlace> PlaceOsdText(const TextItem& item, int32_t displayWidth, int32_t displayHeight) {
  const auto x = static_cast<int32_t>(item.x);
  auto y = static_cast<int32_t>(item.y);
  if (item.text[0] == '\0' || x < 0 || y < 0) return std::nullopt;
  if (item.anchor == kFromBottom) y = displayHeight - y;
  if (x >= displayWidth || y >= displayHeight) return std::nullopt;
  return OsdPlace{x, y, displayWidth - x};
}
