// SPDX-License-Identifier: MIT
// Overlay shapes as vertices in back-buffer pixels. Colours are 0xAARRGGBB.
#pragma once

#include <array>
#include <cstdint>

#include "display/overlay_list.h"

namespace libnivral {

constexpr uint32_t OpaqueArgb(const OverlayColour& colour) {
  return 0xFF000000u | uint32_t{colour.r} << 16 | uint32_t{colour.g} << 8 | colour.b;
}

/// A vertex that needs no transformation: the layout of D3DFVF_XYZRHW | D3DFVF_DIFFUSE.
struct OverlayVertex {
  float x;
  float y;
  float z;
  float rhw;
  uint32_t colour;
};
static_assert(sizeof(OverlayVertex) == 20);

constexpr OverlayVertex VertexAt(int64_t x, int64_t y, uint32_t colour) {
  return {static_cast<float>(x), static_cast<float>(y), 0.0f, 1.0f, colour};
}

/// Two triangles, clockwise, that fill the rectangle.
inline std::array<OverlayVertex, 6> FilledRect(const PixelRect& r, uint32_t colour) {
  return {VertexAt(r.left, r.top, colour),    VertexAt(r.right, r.bottom, colour),
          VertexAt(r.left, r.bottom, colour), VertexAt(r.right, r.bottom, colour),
          VertexAt(r.left, r.top, colour),    VertexAt(r.right, r.top, colour)};
}

/// Four segments around the rectangle, whose sides lie on its edges.
inline std::array<OverlayVertex, 8> ClosedOutline(const PixelRect& r, uint32_t colour) {
  const OverlayVertex topLeft = VertexAt(r.left, r.top, colour);
  const OverlayVertex topRight = VertexAt(r.right, r.top, colour);
  const OverlayVertex bottomRight = VertexAt(r.right, r.bottom, colour);
  const OverlayVertex bottomLeft = VertexAt(r.left, r.bottom, colour);
  return {topLeft, topRight, topRight, bottomRight, bottomRight, bottomLeft, bottomLeft, topLeft};
}

/// Eight segments at the corners, each one part in `parts` of a side.
inline std::array<OverlayVertex, 16> CornerBrackets(const WideRect& corners, int32_t parts, uint32_t colour) {
  std::array<OverlayVertex, 16> vertices;
  size_t at = 0;
  for (const Stroke& s : BracketStrokes(corners, parts)) {
    vertices[at++] = VertexAt(s.x1, s.y1, colour);
    vertices[at++] = VertexAt(s.x2, s.y2, colour);
  }
  return vertices;
}

}  // namespace libnivral
