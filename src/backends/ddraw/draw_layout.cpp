// SPDX-License-Identifier: MIT
#include "backends/ddraw/draw_layout.h"

namespace {

/// Window coordinates are 16-bit on the wire of window messages; beyond them nothing is on any screen.
constexpr PixelRect kReachable{-32768, -32768, 32767, 32767};

int32_t Distance(int32_t from, int32_t to) {
  return static_cast<int32_t>(std::clamp<int64_t>(int64_t{to} - from, INT32_MIN, INT32_MAX));
}

}  // namespace

PixelRect DrawnArea(const PixelRect& play, const PixelRect& client) {
  const PixelRect area = Intersect(play.Empty() ? client : play, kReachable);
  if (area.Empty() || area.Width() > kMaxAreaSide || area.Height() > kMaxAreaSide) return {};
  return area;
}

PixelRect SeenFrom(int32_t x, int32_t y, const PixelRect& rect) {
  return {Distance(x, rect.left), Distance(y, rect.top), Distance(x, rect.right), Distance(y, rect.bottom)};
}

ScreenCopy CutToScreen(int32_t x, int32_t y, int32_t width, int32_t height, const PixelRect& bounds) {
  const PixelRect target = Intersect({x, y, x + width, y + height}, bounds);
  if (target.Empty()) return {};
  return {{target.left - x, target.top - y, target.right - x, target.bottom - y}, target};
}
