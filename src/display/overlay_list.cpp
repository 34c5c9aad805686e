// SPDX-License-Identifier: MIT
#include "display/overlay_list.h"

#include <algorithm>
#include <cmath>

namespace libnivral {
namespace {

/// Takes what is on the display.
class Collector {
 public:
  Collector(RectList& to, int32_t width, int32_t height)
      : m_to(to), m_display{0, 0, std::max(width, 0), std::max(height, 0)} {}

  const PixelRect& Display() const { return m_display; }

  void AddVisible(const PixelRect& rect) {
    if (!rect.Empty()) m_to.push_back(rect);
  }

  /// Right and bottom excluded.
  void Add(const WideRect& rect) {
    AddVisible({Cut(rect.left, m_display.right), Cut(rect.top, m_display.bottom),
                Cut(rect.right, m_display.right), Cut(rect.bottom, m_display.bottom)});
  }

  /// Corners in any order, both included.
  void AddLine(const Stroke& s) {
    Add({std::min(s.x1, s.x2), std::min(s.y1, s.y2), std::max(s.x1, s.x2) + 1, std::max(s.y1, s.y2) + 1});
  }

  bool Sees(const WideRect& corners) const {
    return SidesVisible(corners, m_display.right, m_display.bottom);
  }

 private:
  static int32_t Cut(int64_t value, int32_t end) {
    return static_cast<int32_t>(std::clamp<int64_t>(value, 0, end));
  }

  RectList& m_to;
  PixelRect m_display;
};

/// Four bars as thick as there are outlines, as far as these do not meet; each of the others by itself.
void AddOutlines(Collector& to, const WideRect& outermost, int32_t count) {
  const int64_t apart = std::min(outermost.right - outermost.left, outermost.bottom - outermost.top) / 2;
  const int64_t bar = std::clamp<int64_t>(apart, 0, count);
  const WideRect& o = outermost;
  if (bar > 0) {
    to.Add({o.left, o.top, o.right + 1, o.top + bar});
    to.Add({o.left, o.bottom + 1 - bar, o.right + 1, o.bottom + 1});
    to.Add({o.left, o.top + bar, o.left + bar, o.bottom + 1 - bar});
    to.Add({o.right + 1 - bar, o.top + bar, o.right + 1, o.bottom + 1 - bar});
  }
  for (int64_t n = bar; n < count; ++n) {
    const WideRect r = o.Grown(-n);
    if (!to.Sees(r)) continue;
    to.AddLine({r.left, r.top, r.right, r.top});
    to.AddLine({r.left, r.bottom, r.right, r.bottom});
    to.AddLine({r.left, r.top, r.left, r.bottom});
    to.AddLine({r.right, r.top, r.right, r.bottom});
  }
}

void AddBrackets(Collector& to, const OverlayShape& shape) {
  for (int64_t n = 0; n < shape.size; ++n) {
    const WideRect corners = shape.corners.Grown(-n);
    if (!to.Sees(corners)) continue;
    for (const Stroke& stroke : BracketStrokes(corners, shape.parts))
      to.AddLine(stroke);
  }
}

/// The pixels at most the radius away from the middle, without the outermost column at the left and row at
/// the top. Rows as wide as one above and one below the middle make a rectangle that holds all rows between.
void AddDisc(Collector& to, const OverlayShape& disc) {
  const int64_t radius = disc.size;
  const int64_t x = disc.corners.left + radius;
  const int64_t y = disc.corners.top + radius;
  // Distances from the middle of the rows that the display has.
  const int64_t above = y, below = to.Display().bottom - 1 - y;
  const int64_t nearest = std::max<int64_t>({0, -above, -below});
  const int64_t farthest = std::min(radius, std::max(above, below));
  if (nearest > farthest) return;
  const auto holds = [&](int64_t dx, int64_t dy) { return dx * dx + dy * dy <= radius * radius; };
  auto right = static_cast<int64_t>(std::sqrt(static_cast<double>(radius * radius - nearest * nearest)));
  for (int64_t dy = nearest; dy <= farthest; ++dy) {
    while (!holds(right, dy))
      --right;
    while (dy < farthest && holds(right, dy + 1))
      ++dy;
    to.Add({x - std::min(right, radius - 1), y - std::min(dy, radius - 1), x + right + 1, y + dy + 1});
  }
}

}  // namespace

void AppendPixels(RectList& to, const OverlayShape& shape, int32_t width, int32_t height) {
  Collector collector(to, width, height);
  switch (shape.kind) {
    case OverlayShape::Kind::Fill:
      collector.Add(shape.corners);
      break;
    case OverlayShape::Kind::Outline:
      AddOutlines(collector, shape.corners, shape.size);
      break;
    case OverlayShape::Kind::Brackets:
      AddBrackets(collector, shape);
      break;
    case OverlayShape::Kind::Disc:
      AddDisc(collector, shape);
      break;
  }
}

bool MayTouch(const OverlayShape& shape, const PixelRect& area) {
  const WideRect& c = shape.corners;
  // Outlines of a rectangle that is thinner than they are turn inside out.
  const WideRect turned{c.right - shape.size, c.bottom - shape.size, c.left + shape.size, c.top + shape.size};
  if (area.left > std::max(c.right, turned.right) || area.right <= std::min(c.left, turned.left) ||
      area.top > std::max(c.bottom, turned.bottom) || area.bottom <= std::min(c.top, turned.top)) {
    return false;
  }
  if (shape.kind != OverlayShape::Kind::Outline) return true;
  const WideRect inside = c.Grown(-shape.size);
  return area.left <= inside.left || area.right > inside.right || area.top <= inside.top ||
         area.bottom > inside.bottom;
}

bool DiscCovers(const OverlayShape& disc, int32_t width, int32_t height) {
  const int64_t radius = disc.size;
  const int64_t x = disc.corners.left + radius;
  const int64_t y = disc.corners.top + radius;
  const int64_t dx = std::max(x, width - 1 - x);
  const int64_t dy = std::max(y, height - 1 - y);
  // The disc lacks its outermost column at the left and row at the top.
  return dx < radius && dy < radius && dx * dx + dy * dy <= radius * radius;
}

bool SidesVisible(const WideRect& corners, int32_t width, int32_t height) {
  const auto within = [](int64_t value, int64_t extent) { return value >= 0 && value < extent; };
  return within(corners.left, width) || within(corners.right, width) || within(corners.top, height) ||
         within(corners.bottom, height);
}

std::array<Stroke, 8> BracketStrokes(const WideRect& corners, int32_t parts) {
  const auto& [l, t, r, b] = corners;
  const int64_t dx = (r - l) / parts;
  const int64_t dy = (b - t) / parts;
  const int64_t farX = l + (parts - 1) * dx;
  const int64_t farY = t + (parts - 1) * dy;
  return {{{l, t, l + dx, t},
           {farX, t, r, t},
           {r, t, r, t + dy},
           {r, farY, r, b},
           {farX, b, r, b},
           {l, b, l + dx, b},
           {l, farY, l, b},
           {l, t, l, t + dy}}};
}

}  // namespace libnivral
