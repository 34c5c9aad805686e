// SPDX-License-Identifier: MIT
#include "display/overlay_layout.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <iterator>

#include "picture/pixel_rect.h"

namespace libnivral {
namespace {

constexpr uint16_t kPersonClass = 1;
constexpr uint16_t kCarClass = 2;

const char* ClassLabel(uint16_t classId) {
  constexpr const char* kLabels[] = {"unknown", "Person",  "car",     "bus",
                                     "truck",   "minibus", "vehicle", "non-vehicle"};
  return classId < std::size(kLabels) ? kLabels[classId] : "Unk";
}

/// Boxes may come with any numbers; coordinates this far out are as good as any further.
constexpr int32_t kFarOut = 1 << 20;

int64_t Whole(int64_t value) {
  return value;
}

int64_t Whole(float value) {
  return std::clamp(TruncToInt(value), -kFarOut, kFarOut);
}

/// In whole pixels, or in fractions of them that are cut only when something is drawn.
template <class Number>
struct Box {
  Number left, top, right, bottom;

  Number Width() const { return right - left; }
  Number Height() const { return bottom - top; }
  Box Grown(int64_t pixels) const {
    const auto by = static_cast<Number>(pixels);
    return {left - by, top - by, right + by, bottom + by};
  }
  WideRect Corners() const { return {Whole(left), Whole(top), Whole(right), Whole(bottom)}; }
};

using Edges = Box<float>;

struct DistanceText {
  char text[16]{};
  int64_t characters = 0;

  void Write(uint16_t tenths, OverlayStyle::Distance form) {
    char* end = std::end(text);
    if (form == OverlayStyle::Distance::Tenths) {
      end = std::to_chars(text, end, tenths / 10).ptr;
      *end++ = '.';
      *end++ = static_cast<char>('0' + tenths % 10);
    } else {
      end = std::to_chars(text, end, form == OverlayStyle::Distance::Metres ? (tenths + 9) / 10 : tenths).ptr;
    }
    *end++ = 'm';
    *end = '\0';
    characters = end - text;
  }
};

/// The steps of one layout.
class Layout {
 public:
  Layout(OverlayList& list, const DisplayMap& map, const OverlayStyle& style)
      : m_list(list), m_map(map), m_style(style) {}

  void Boxes(const AlgRecord& record);
  void Landmarks(const DsmRecord& record);
  void Faces(const DsmRecord& record);

 private:
  template <class Record>
  Edges MapEdges(const Record& record, int32_t i) const;
  template <class Use>
  void Round(const Edges& edges, Use&& use) const;
  template <class Number>
  bool IsBeyond(const Box<Number>& box) const;

  template <class Number>
  void DrawBox(const Box<Number>& box, const AlgRecord& record, int32_t i);
  template <class Number>
  void DrawClass(const Box<Number>& box, uint16_t classId, const OverlayColour& colour);
  template <class Number>
  void DrawDistance(const Box<Number>& box, uint16_t tenths, const OverlayColour& colour);
  OverlayLabel DrawLabel(const LabelStyle& style, int64_t x, int64_t y, int64_t width, const char* text,
                         const OverlayColour& colour);
  const LabelStyle& StyleOf(uint16_t classId) const;

  OverlayList& m_list;
  const DisplayMap& m_map;
  const OverlayStyle& m_style;
  std::array<OverlayLabel, kMaxBoxes> m_distances;
  size_t m_distanceCount = 0;
};

/// Cut to the display on the far side only where they exceed it or are no numbers.
template <class Record>
Edges Layout::MapEdges(const Record& record, int32_t i) const {
  Edges e{record.left[i], record.top[i], record.right[i], record.bottom[i]};
  if (m_style.mapped) e = {m_map.X(e.left), m_map.Y(e.top), m_map.X(e.right), m_map.Y(e.bottom)};
  return {std::max(e.left, 0.0f), std::max(e.top, 0.0f),
          std::min(static_cast<float>(m_map.displayWidth), e.right),
          std::min(static_cast<float>(m_map.displayHeight), e.bottom)};
}

template <class Use>
void Layout::Round(const Edges& edges, Use&& use) const {
  const auto whole = [](float value) { return int64_t{TruncToInt(value)}; };
  const int64_t left = whole(edges.left);
  const int64_t top = whole(edges.top);
  switch (m_style.rounding) {
    case OverlayStyle::Rounding::CornerAndSize:
      use(Box<int64_t>{left, top, left + whole(edges.Width()), top + whole(edges.Height())});
      break;
    case OverlayStyle::Rounding::Edges:
      use(Box<int64_t>{left, top, whole(edges.right), whole(edges.bottom)});
      break;
    case OverlayStyle::Rounding::Result:
      use(edges);
      break;
  }
}

/// What is no number is beyond, too.
template <class Number>
bool Layout::IsBeyond(const Box<Number>& box) const {
  return !(box.left <= static_cast<Number>(m_map.displayWidth) &&
           box.top <= static_cast<Number>(m_map.displayHeight));
}

void Layout::Boxes(const AlgRecord& record) {
  const int32_t count = std::min<int32_t>(record.count, kMaxBoxes);
  for (int32_t i = 0; i < count; ++i) {
    if (!m_style.emptyResults && record.classId[i] == 0 && record.distance[i] == 0) continue;
    Round(MapEdges(record, i), [&](const auto& box) { DrawBox(box, record, i); });
  }
  for (size_t i = 0; i < m_distanceCount; ++i)
    m_list.labels.push_back(m_distances[i]);
}

template <class Number>
void Layout::DrawBox(const Box<Number>& box, const AlgRecord& record, int32_t i) {
  const bool beyond = IsBeyond(box);
  if (beyond && m_style.leftOut == OverlayStyle::Beyond::Box) return;
  const bool person = record.classId[i] == kPersonClass;
  const int32_t lines = m_style.hairlines ? 1 : record.lineWidth;
  const Box<Number> outermost = box.Grown(lines / 2);
  const Box<Number> innermost = outermost.Grown(-std::max(lines - 1, 0));
  WideRect corners = outermost.Corners();
  corners.right -= m_style.farSides;
  corners.bottom -= m_style.farSides;
  m_list.shapes.push_back({.kind = OverlayShape::Kind::Outline,
                           .colour = person ? m_style.personColour : m_style.boxColour,
                           .corners = corners,
                           .size = lines});

  const OverlayColour& labelColour = person ? m_style.personLabelColour : m_style.boxColour;
  DrawClass(m_style.labelsOnLines ? outermost : box, record.classId[i], labelColour);
  if (record.distance[i] > 0 && !(beyond && m_style.leftOut == OverlayStyle::Beyond::Distance))
    DrawDistance(m_style.labelsOnLines ? innermost : box, record.distance[i], labelColour);
}

const LabelStyle& Layout::StyleOf(uint16_t classId) const {
  if (classId == 0) return m_style.unknownLabel;
  return classId == kCarClass ? m_style.carLabel : m_style.otherLabel;
}

/// Above the box.
template <class Number>
void Layout::DrawClass(const Box<Number>& box, uint16_t classId, const OverlayColour& colour) {
  const LabelStyle& style = StyleOf(classId);
  if (!style.shown) return;
  const char* const text = ClassLabel(classId);
  const int64_t width = style.width.Of(static_cast<int64_t>(std::strlen(text)));
  const int64_t y = Whole(box.top - static_cast<Number>(style.height + style.gap));
  m_list.labels.push_back(DrawLabel(style, Whole(box.left), y, width, text, colour));
}

/// Below the box, or in the middle of its bottom when it is large enough.
template <class Number>
void Layout::DrawDistance(const Box<Number>& box, uint16_t tenths, const OverlayColour& colour) {
  const LabelStyle& style = m_style.distanceLabel;
  if (!style.shown) return;
  DistanceText distance;
  distance.Write(tenths, m_style.counted);
  const int64_t width = style.width.Of(distance.characters);
  if (m_style.written != m_style.counted) distance.Write(tenths, m_style.written);
  int64_t x = Whole(box.left);
  int64_t y = Whole(box.bottom + static_cast<Number>(style.gap));
  if (box.Width() > static_cast<Number>(width) && box.Height() > 3 * static_cast<Number>(style.height)) {
    x += Whole(box.Width()) / 2 - width / 2;
    y = Whole(box.bottom - static_cast<Number>(style.height));
  }
  m_distances[m_distanceCount++] = DrawLabel(style, x, y, width, distance.text, colour);
}

OverlayLabel Layout::DrawLabel(const LabelStyle& style, int64_t x, int64_t y, int64_t width, const char* text,
                               const OverlayColour& colour) {
  const int64_t first = m_style.labelsOnScreen ? 0 : INT64_MIN;
  x = std::max(x, first);
  y = std::max(y, first);
  const WideRect area{x + style.fillLeft, y, x + width + style.fillRight, y + style.height};
  m_list.shapes.push_back({.kind = OverlayShape::Kind::Fill, .colour = colour, .corners = area});
  OverlayLabel label{.area = {SaturateToInt(area.left), SaturateToInt(area.top), SaturateToInt(area.right),
                              SaturateToInt(area.bottom)},
                     .shape = m_list.shapes.size() - 1,
                     .x = SaturateToInt(x + style.indent),
                     .y = SaturateToInt(std::max(y - style.rise, first))};
  std::strncpy(label.text, text, sizeof(label.text) - 1);
  return label;
}

/// All have one colour: behind one that covers the picture nothing is left to draw.
void Layout::Landmarks(const DsmRecord& record) {
  const int32_t count = std::min<int32_t>(record.pointCount, kMaxLandmarks);
  for (int32_t i = 0; i < count; i += m_style.landmarkStep) {
    const int64_t x = TruncToInt(m_style.mapped ? m_map.X(record.x[i]) : record.x[i]);
    const int64_t y = TruncToInt(m_style.mapped ? m_map.Y(record.y[i]) : record.y[i]);
    const OverlayShape disc{.kind = OverlayShape::Kind::Disc,
                            .colour = kOverlayGreen,
                            .corners = WideRect{x, y, x, y}.Grown(record.pointSize),
                            .size = record.pointSize};
    m_list.shapes.push_back(disc);
    if (DiscCovers(disc, m_map.displayWidth, m_map.displayHeight)) return;
  }
}

void Layout::Faces(const DsmRecord& record) {
  const int32_t brackets = m_style.bracketsPerSize * record.pointSize;
  const int32_t count = std::min(record.boxCount, kMaxBoxes);
  for (int32_t i = 0; i < count; ++i) {
    const Edges edges = MapEdges(record, i);
    if (edges.right == 0 || edges.bottom == 0) continue;
    Round(edges, [&](const auto& box) {
      if (m_style.leftOut == OverlayStyle::Beyond::Box && IsBeyond(box)) return;
      m_list.shapes.push_back({.kind = OverlayShape::Kind::Brackets,
                               .colour = kOverlayGreen,
                               .corners = box.Grown(brackets / m_style.bracketsOutside).Corners(),
                               .size = brackets,
                               .parts = m_style.bracketParts});
    });
  }
}

}  // namespace

void LayOutRecord(OverlayList& list, RecordView record, const DisplayMap& map, const OverlayStyle& style) {
  list.Clear();
  Layout layout(list, map, style);
  if (const auto* const* alg = std::get_if<const AlgRecord*>(&record)) layout.Boxes(**alg);
  if (const auto* const* dsm = std::get_if<const DsmRecord*>(&record)) {
    layout.Landmarks(**dsm);
    layout.Faces(**dsm);
  }
}

}  // namespace libnivral
