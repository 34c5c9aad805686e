// SPDX-License-Identifier: MIT
#include "backends/d3d9/overlay_shapes.h"

std::array<OverlayVertex, 6> FilledRect(const PixelRect& r, uint32_t color) {
  return {VertexAt(r.left, r.top, color),    VertexAt(r.right, r.bottom, color),
          VertexAt(r.left, r.bottom, color), VertexAt(r.right, r.bottom, color),
          VertexAt(r.left, r.top, color),    VertexAt(r.right, r.top, color)};
}

std::array<OverlayVertex, 8> ClosedOutline(const PixelRect& r, uint32_t color) {
  const OverlayVertex topLeft = VertexAt(r.left, r.top, color);
  const OverlayVertex topRight = VertexAt(r.right, r.top, color);
  const OverlayVertex bottomRight = VertexAt(r.right, r.bottom, color);
  const OverlayVertex bottomLeft = VertexAt(r.left, r.bottom, color);
  return {topLeft, topRight, topRight, bottomRight, bottomRight, bottomLeft, bottomLeft, topLeft};
}

std::array<OverlayVertex, 16> CornerBrackets(const PixelRect& rect, uint32_t color) {
  const int64_t l = rect.left;
  const int64_t t = rect.top;
  const int64_t r = rect.right;
  const int64_t b = rect.bottom;
  const int64_t dx = rect.Width() / 5;
  const int64_t dy = rect.Height() / 5;
  const auto at = [color](int64_t x, int64_t y) { return VertexAt(x, y, color); };
  return {at(l, t),          at(l + dx, t), at(l + 4 * dx, t), at(r, t),       //
          at(r, t),          at(r, t + dy), at(r, t + 4 * dy), at(r, b),       //
          at(l + 4 * dx, b), at(r, b),      at(l, b),          at(l + dx, b),  //
          at(l, t + 4 * dy), at(l, b),      at(l, t),          at(l, t + dy)};
}
