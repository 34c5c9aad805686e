// SPDX-License-Identifier: MIT
// Overlay shapes as vertices in back-buffer pixels.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "picture/pixel_rect.h"

// Colours are 0xAARRGGBB.
constexpr uint32_t kGreen = 0xFF00FF00;
constexpr uint32_t kOrangeRed = 0xFFFF6100;
constexpr uint32_t kAmber = 0xFFFFC500;
constexpr uint32_t kBlue = 0xFF0000FF;

/// COLORREF 0x00BBGGRR as an opaque 0xAARRGGBB.
constexpr uint32_t OpaqueArgb(uint32_t colorRef) {
  return 0xFF000000u | (colorRef & 0xFFu) << 16 | (colorRef & 0xFF00u) | (colorRef >> 16 & 0xFFu);
}

/// A vertex that needs no transformation: the layout of D3DFVF_XYZRHW | D3DFVF_DIFFUSE.
struct OverlayVertex {
  float x;
  float y;
  float z;
  float rhw;
  uint32_t color;
};
static_assert(sizeof(OverlayVertex) == 20);

constexpr OverlayVertex VertexAt(int64_t x, int64_t y, uint32_t color) {
  return {static_cast<float>(x), static_cast<float>(y), 0.0f, 1.0f, color};
}

/// Two triangles, clockwise, that fill the rectangle.
std::array<OverlayVertex, 6> FilledRect(const PixelRect& rect, uint32_t color);

/// Four segments around the rectangle, whose sides lie on its edges.
std::array<OverlayVertex, 8> ClosedOutline(const PixelRect& rect, uint32_t color);

/// Eight segments at the corners; the middle three fifths of every side stay open.
std::array<OverlayVertex, 16> CornerBrackets(const PixelRect& rect, uint32_t color);

/// The n-th of several nested outlines, each a pixel further inside.
constexpr PixelRect NestedRect(const PixelRect& rect, int32_t n) {
  return {rect.left + n, rect.top + n, rect.right - n, rect.bottom - n};
}

/// Whether any side of the rectangle can be seen in a picture of that size. Saves the work on the thousands
/// of unseen outlines that a huge line thickness asks for.
constexpr bool SidesVisible(const PixelRect& rect, int32_t width, int32_t height) {
  const auto within = [](int32_t value, int32_t extent) { return value >= 0 && value < extent; };
  return within(rect.left, width) || within(rect.right, width) || within(rect.top, height) ||
         within(rect.bottom, height);
}

/// Whether such a disc covers a whole picture.
constexpr bool DiscCovers(int64_t centerX, int64_t centerY, int64_t radius, int32_t width, int32_t height) {
  const int64_t dx = std::max(centerX, width - 1 - centerX);
  const int64_t dy = std::max(centerY, height - 1 - centerY);
  // The disc lacks its outermost column at the left and row at the top.
  return dx < radius && dy < radius && dx * dx + dy * dy <= radius * radius;
}

/// Calls fill(rectangle) for rectangles that together are the pixels of a disc within a picture of that size:
/// those at most `radius` away from its middle, without the outermost column at the left and row at the top.
template <class Fill>
void ForEachDiscPart(int64_t centerX, int64_t centerY, int64_t radius, int32_t width, int32_t height,
                     Fill&& fill) {
  const int64_t firstY = std::max(1 - radius, -centerY);
  const int64_t lastY = std::min(radius, height - 1 - centerY);
  PixelRect part;
  for (int64_t dy = firstY; dy <= lastY; ++dy) {
    const auto reach = static_cast<int64_t>(std::sqrt(static_cast<double>(radius * radius - dy * dy)));
    const auto left = static_cast<int32_t>(std::max(centerX - std::min(reach, radius - 1), int64_t{0}));
    const auto right = static_cast<int32_t>(std::min(centerX + reach + 1, int64_t{width}));
    const auto y = static_cast<int32_t>(centerY + dy);
    if (part.left != left || part.right != right) {
      if (!part.Empty()) fill(part);
      part = {left, y, right, y};
    }
    part.bottom = y + 1;
  }
  if (!part.Empty()) fill(part);
}
