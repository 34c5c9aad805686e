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
std::array<OverlayVertex, 6> FilledRect(const PixelRect& rect, uint32_t colour);

/// Four segments around the rectangle, whose sides lie on its edges.
std::array<OverlayVertex, 8> ClosedOutline(const PixelRect& rect, uint32_t colour);

/// Eight segments at the corners, each one part in `parts` of a side.
std::array<OverlayVertex, 16> CornerBrackets(const WideRect& corners, int32_t parts, uint32_t colour);

}  // namespace libnivral
