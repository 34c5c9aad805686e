// SPDX-License-Identifier: MIT
#include "backends/d3d9/overlay_vertices.h"

#include "display/overlay_shapes.h"

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

std::array<OverlayVertex, 16> CornerBrackets(const WideRect& corners, int32_t parts, uint32_t color) {
  std::array<OverlayVertex, 16> vertices;
  size_t at = 0;
  for (const Stroke& s : BracketStrokes(corners, parts)) {
    vertices[at++] = VertexAt(s.x1, s.y1, color);
    vertices[at++] = VertexAt(s.x2, s.y2, color);
  }
  return vertices;
}
