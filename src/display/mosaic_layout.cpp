// SPDX-License-Identifier: MIT
#include "display/mosaic_layout.h"

#include <algorithm>
#include <cstring>

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

void FillBlocks(uint8_t* pixels, ptrdiff_t pitch, int32_t bytesPerPixel, int32_t width, int32_t height,
                const MosaicGrid& grid) {
  const auto size = static_cast<size_t>(bytesPerPixel);
  const auto x = [&](int32_t column) {
    return static_cast<size_t>(std::clamp(grid.target.left + column * grid.block, 0, width));
  };
  const size_t left = x(0) * size;
  const size_t right = x(grid.columns) * size;
  for (int32_t row = 0; row < grid.rows; ++row) {
    // A block takes its colour from its first pixel in the picture, so its first line can be filled in place.
    const int32_t top = std::max(grid.target.top + row * grid.block, 0);
    const int32_t bottom = std::min(grid.target.top + (row + 1) * grid.block, height);
    uint8_t* const line = pixels + top * pitch;
    for (int32_t column = 0; column < grid.columns; ++column) {
      const size_t end = x(column + 1) * size;
      for (size_t at = x(column) * size + size; at < end; ++at)
        line[at] = line[at - size];
    }
    for (int32_t y = top + 1; y < bottom; ++y)
      std::memcpy(pixels + y * pitch + left, line + left, right - left);
  }
}

}  // namespace libnivral
