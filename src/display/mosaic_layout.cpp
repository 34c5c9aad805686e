// SPDX-License-Identifier: MIT
#include "display/mosaic_layout.h"

#include <algorithm>

namespace libnivral {
namespace {

constexpr int32_t kMaxBlock = 16384;

/// One direction of the grid.
struct Axis {
  int32_t count = 0;
  int32_t targetStart = 0;
  int32_t sourceStart = 0;
  int32_t sourceEnd = 0;
};

Axis LayoutAxis(int64_t from, int64_t to, int64_t block, int64_t display) {
  const int64_t visibleFrom = std::max<int64_t>(from, 0);
  const int64_t visibleTo = std::min(to, display);
  if (visibleFrom >= visibleTo) return {};
  const int64_t first = (visibleFrom - from) / block;
  const int64_t end = (visibleTo - from + block - 1) / block;
  return {static_cast<int32_t>(end - first), static_cast<int32_t>(from + first * block),
          static_cast<int32_t>(visibleFrom), static_cast<int32_t>(visibleTo)};
}

}  // namespace

int32_t MosaicBlockSize(uint32_t level) {
  int64_t units = static_cast<int32_t>(level);
  switch (level) {
    case 5:
      units = 1;
      break;
    case 10:
      units = 2;
      break;
    case 20:
      units = 3;
      break;
    case 30:
      units = 4;
      break;
    case 50:
      units = 5;
      break;
    default:
      break;
  }
  return static_cast<int32_t>(std::clamp<int64_t>(units * 3, 0, kMaxBlock));
}

int32_t MosaicGrid::SourceX(int32_t column) const {
  return std::max(target.left + column * block - source.left, 0);
}

int32_t MosaicGrid::SourceY(int32_t row) const {
  return std::max(target.top + row * block - source.top, 0);
}

MosaicGrid LayoutMosaic(const PixelRect& area, int32_t block, int32_t displayWidth, int32_t displayHeight) {
  if (block < 1) return {};
  const Axis x = LayoutAxis(area.left, area.right, block, displayWidth);
  const Axis y = LayoutAxis(area.top, area.bottom, block, displayHeight);
  if (x.count == 0 || y.count == 0) return {};
  return {block,
          x.count,
          y.count,
          {x.targetStart, y.targetStart, x.targetStart + x.count * block, y.targetStart + y.count * block},
          {x.sourceStart, y.sourceStart, x.sourceEnd, y.sourceEnd}};
}

}  // namespace libnivral
