// SPDX-License-Identifier: MIT
#include "backends/d3d9/overlay_vertices.h"

#include "display/overlay_shapes.h"

namespace libnivral {

std::array<OverlayVertex, 6> FilledRect(const PixelRect& r, uint32_t colour) {
  return {VertexAt(r.left, r.top, colour),    VertexAt(r.right, r.bottom, colour),
          VertexAt(r.left, r.bottom, colour), VertexAt(r.right, r.bottom, colour),
          VertexAt(r.left, r.top, colour),    VertexAt(r.right, r.top, colour)};
}

std::array<OverlayVertex, 8> ClosedOutline(const PixelRect& r, uint32_t colour) {
  const OverlayVertex topLeft = VertexAt(r.left, r.top, colour);
  const OverlayVertex topRight = VertexAt(r.right, r.top, colour);
  const OverlayVertex bottomRight = VertexAt(r.right, r.bottom, colour);
  const OverlayVertex bottomLeft = VertexAt(r.left, r.bottom, colour);
  return {topLeft, topRight, topRight, bottomRight, bottomRight, bottomLeft, bottomLeft, topLeft};
}

std::array<OverlayVertex, 16> CornerBrackets(const WideRect& corners, int32_t parts, uint32_t colour) {
  std::array<OverlayVertex, 16> vertices;
  size_t at = 0;
  for (const Stroke& s : BracketStrokes(corners, parts)) {
    vertices[at++] = VertexAt(s.x1, s.y1, colour);
    vertices[at++] = VertexAt(s.x2, s.y2, colour);
  }
  return vertices;
}

}  // namespace libnivral
