// SPDX-License-Identifier: MIT
#include "player/windows/layout.h"

#include <algorithm>
#include <cstdint>

namespace {

constexpr int kGap = 8;
constexpr int kUsualWidth = 1280;

struct Grid {
  int columns;
  int rows;
};

Grid GridFor(int count) {
  int columns = 1;
  while (columns * columns < count)
    ++columns;
  return {columns, (count + columns - 1) / columns};
}

/// Where the share `index` of `count` begins.
int Edge(int index, int count, int whole) {
  return static_cast<int>(static_cast<int64_t>(whole + kGap) * index / count);
}

}  // namespace

PixelArea CellOf(int index, int count, PixelSize window) {
  const Grid grid = GridFor(count);
  const int column = index % grid.columns;
  const int row = index / grid.columns;
  const int left = Edge(column, grid.columns, window.width);
  const int top = Edge(row, grid.rows, window.height);
  return {left, top, Edge(column + 1, grid.columns, window.width) - kGap - left,
          Edge(row + 1, grid.rows, window.height) - kGap - top};
}

PixelArea RoomForPanes(PixelSize window, int panelWidth, int barHeight) {
  return {0, 0, std::max(window.width - panelWidth, 1), std::max(window.height - barHeight, 1)};
}

PixelArea FitInto(const PixelArea& cell, PixelSize picture) {
  const int64_t across = int64_t{cell.width} * picture.height;
  const int64_t down = int64_t{cell.height} * picture.width;
  int width = cell.width;
  int height = cell.height;
  if (across > down)
    width = static_cast<int>(down / picture.height);
  else
    height = static_cast<int>(across / picture.width);
  width = std::max(width, 1);
  height = std::max(height, 1);
  return {cell.left + (cell.width - width) / 2, cell.top + (cell.height - height) / 2, width, height};
}

PixelSize WindowSizeFor(int count, PixelSize picture) {
  if (count == 1) return picture;
  const Grid grid = GridFor(count);
  const PixelArea row =
      FitInto({0, 0, kUsualWidth, 16 * kUsualWidth}, {grid.columns * picture.width, picture.height});
  return {kUsualWidth, std::min(grid.rows * row.height, kUsualWidth)};
}
