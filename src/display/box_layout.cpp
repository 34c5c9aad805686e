// SPDX-License-Identifier: MIT
#include "display/box_layout.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "picture/pixel_rect.h"

namespace {

constexpr uint16_t kPersonClass = 1;

/// Edges on the display, cut to it on the far side unless they are numbers within it.
struct Edges {
  float left, top, right, bottom;
};

/// Wide enough for any 32-bit corner grown by any 16-bit width.
struct Box {
  int64_t x, y, width, height;

  Box Grown(int64_t by) const { return {x - by, y - by, width + 2 * by, height + 2 * by}; }
};

template <class Record>
Edges MapEdges(const Record& record, int32_t i, const DisplayMap& map) {
  return {std::max(map.X(record.left[i]), 0.0f), std::max(map.Y(record.top[i]), 0.0f),
          std::min(static_cast<float>(map.displayWidth), map.X(record.right[i])),
          std::min(static_cast<float>(map.displayHeight), map.Y(record.bottom[i]))};
}

Box ToBox(const Edges& edges) {
  return {TruncToInt(edges.left), TruncToInt(edges.top), TruncToInt(edges.right - edges.left),
          TruncToInt(edges.bottom - edges.top)};
}

int32_t Saturate(int64_t value) {
  return static_cast<int32_t>(std::clamp<int64_t>(value, INT32_MIN, INT32_MAX));
}

void AddOutline(RectCollector& to, const Box& box) {
  const int64_t right = box.x + box.width - 1;
  const int64_t bottom = box.y + box.height - 1;
  to.Add(box.x, box.y, right, box.y);
  to.Add(box.x, bottom, right, bottom);
  to.Add(box.x, box.y, box.x, bottom);
  to.Add(right, box.y, right, bottom);
}

/// Nested outlines, from `box` inward; returns the innermost.
Box AddNestedOutlines(RectCollector& to, Box box, int32_t count) {
  for (int32_t n = 0; n < count; ++n) {
    if (n > 0) box = box.Grown(-1);
    AddOutline(to, box);
  }
  return box;
}

void AddLabel(NothrowList<OverlayLabel>& labels, int64_t x, int64_t y, const char* text) {
  OverlayLabel label{Saturate(x), Saturate(y), {}};
  std::snprintf(label.text, sizeof(label.text), "%s", text);
  labels.push_back(label);
}

void AddClassLabel(AlgLayout& layout, RectCollector& to, const Box& outermost, uint16_t classId) {
  char text[kClassLabelBytes];
  CopyClassLabel(text, classId);
  int64_t width = static_cast<int64_t>(static_cast<double>(std::strlen(text)) * kLabelFontSize * 1.5 / 3);
  if (classId == 0) width += 10;
  const int64_t y = outermost.y - kLabelFontSize;
  to.Add(outermost.x, y, outermost.x + width, outermost.y - 1);
  AddLabel(layout.classLabels, outermost.x + 1, y, text);
}

void AddDistanceLabel(AlgLayout& layout, RectCollector& to, const Box& innermost, uint16_t tenths) {
  char text[16];
  const int64_t length = std::snprintf(text, sizeof(text), "%.1fm", tenths / 10.0);
  const int64_t width = length * kLabelFontSize * 3 / 5;
  int64_t x = innermost.x;
  int64_t y = innermost.y + innermost.height + 1;
  if (innermost.width > width && innermost.height > 3 * kLabelFontSize) {
    x = innermost.x + innermost.width / 2 - width / 2;
    y = innermost.y + innermost.height - kLabelFontSize;
  }
  to.Add(x - 1, y, x + width - 2, y + kLabelFontSize - 1);
  AddLabel(layout.distanceLabels, x, y, text);
}

/// A disc without the outermost row above and column left of its centre, as landmarks are drawn.
void AddDisc(RectCollector& to, int64_t x, int64_t y, int64_t radius, const DisplayMap& map) {
  const int64_t first = std::max(1 - radius, -y);
  const int64_t last = std::min(radius, map.displayHeight - 1 - y);
  for (int64_t dy = first; dy <= last; ++dy) {
    const auto reach = static_cast<int64_t>(std::sqrt(static_cast<double>(radius * radius - dy * dy)));
    to.Add(x + std::max(-reach, 1 - radius), y + dy, x + reach, y + dy);
  }
}

/// Eight strokes of an eighth of the sides.
void AddCorners(RectCollector& to, const Box& box) {
  const int64_t right = box.x + box.width;
  const int64_t bottom = box.y + box.height;
  const int64_t dx = box.width / 8;
  const int64_t dy = box.height / 8;
  for (const int64_t y : {box.y, bottom}) {
    to.Add(box.x, y, box.x + dx, y);
    to.Add(box.x + 7 * dx, y, right, y);
  }
  for (const int64_t x : {box.x, right}) {
    to.Add(x, box.y, x, box.y + dy);
    to.Add(x, box.y + 7 * dy, x, bottom);
  }
}

}  // namespace

void AlgLayout::Clear() {
  rects.clear();
  runs.clear();
  classLabels.clear();
  distanceLabels.clear();
}

void LayoutAlgRecord(AlgLayout& layout, const AlgRecord& record, const DisplayMap& map, bool withLabels) {
  layout.Clear();
  RectCollector to(layout.rects, map);
  const int32_t count = std::min<int32_t>(record.count, kMaxBoxes);
  for (int32_t i = 0; i < count; ++i) {
    const uint16_t classId = record.classId[i];
    if (classId == 0 && record.distance[i] == 0) continue;
    const Box outermost = ToBox(MapEdges(record, i, map)).Grown(record.lineWidth / 2);
    const Box innermost = AddNestedOutlines(to, outermost, record.lineWidth);
    if (withLabels) {
      AddClassLabel(layout, to, outermost, classId);
      if (record.distance[i] > 0) AddDistanceLabel(layout, to, innermost, record.distance[i]);
    }
    layout.runs.push_back({classId == kPersonClass ? kOverlayOrange : kOverlayGreen, layout.rects.size()});
  }
}

void LayoutDsmRecord(RectList& rects, const DsmRecord& record, const DisplayMap& map) {
  RectCollector to(rects, map);
  const int32_t points = std::min<int32_t>(record.pointCount, kMaxLandmarks);
  for (int32_t i = 0; i < points; i += 2)
    AddDisc(to, TruncToInt(map.X(record.x[i])), TruncToInt(map.Y(record.y[i])), record.pointSize, map);
  const int32_t boxes = std::min(record.boxCount, kMaxBoxes);
  const int32_t strokes = 2 * record.pointSize;
  for (int32_t i = 0; i < boxes; ++i) {
    const Edges edges = MapEdges(record, i, map);
    if (edges.right == 0 || edges.bottom == 0) continue;
    const Box outermost = ToBox(edges).Grown(strokes);
    for (int32_t n = 0; n < strokes; ++n)
      AddCorners(to, outermost.Grown(-n));
  }
}
