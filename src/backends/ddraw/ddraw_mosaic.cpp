// SPDX-License-Identifier: MIT
#include "backends/ddraw/ddraw_mosaic.h"

#include <algorithm>
#include <cstring>

namespace libnivral {

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
