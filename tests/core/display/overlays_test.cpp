// SPDX-License-Identifier: MIT
// What records look like on each backend: the list that is painted, and which pixels its shapes are.
#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "display/overlay_layout.h"
#include "display/overlay_list.h"

using namespace libnivral;

namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInf = std::numeric_limits<float>::infinity();

std::string NameOf(const OverlayColour& colour) {
  return colour == kOverlayGreen ? "green" : colour == kOverlayOrange ? "orange" : "amber";
}

/// Every shape and label.
std::string Tell(const OverlayList& list) {
  constexpr const char* kKinds[] = {"fill ", "outline ", "brackets ", "disc "};
  std::ostringstream told;
  const auto next = [&]() -> std::ostream& { return told << (told.tellp() > 0 ? "; " : ""); };
  for (const OverlayShape& s : list.shapes) {
    next() << kKinds[static_cast<int>(s.kind)] << NameOf(s.colour) << ' ' << s.corners.left << ','
           << s.corners.top << ',' << s.corners.right << ',' << s.corners.bottom;
    if (s.kind != OverlayShape::Kind::Fill) told << " of " << s.size;
  }
  for (const OverlayLabel& label : list.labels)
    next() << label.text << " at " << label.x << ',' << label.y;
  return told.str();
}

/// A driver-assistance record of one box.
AlgRecord OneBox(float left, float top, float right, float bottom, uint16_t classId, uint16_t distance,
                 uint16_t lineWidth) {
  AlgRecord record{};
  record.count = 1, record.lineWidth = lineWidth;
  record.left[0] = left, record.top[0] = top, record.right[0] = right, record.bottom[0] = bottom;
  record.classId[0] = classId, record.distance[0] = distance;
  return record;
}

OverlayStyle StyleOf(char backend) {
  return backend == 'S' ? SdlStyle(true) : backend == 'D' ? Direct3DStyle(1080) : BurnInStyle();
}

std::string LaidOut(RecordView record, char backend, const DisplayMap& map = {1920, 1080, 1920, 1080}) {
  OverlayList list;
  LayOutRecord(list, record, map, StyleOf(backend));
  return Tell(list);
}

struct BoxCase {
  const char* what;
  AlgRecord record;
  char backend;
  const char* expected;
};

const BoxCase kBoxes[] = {
    {"a person in a thick box that has room for the distance", OneBox(100, 200, 301, 400, 1, 123, 4), 'S',
     "outline orange 98,198,302,401 of 4; fill orange 98,186,135,198; fill orange 181,387,217,399; "
     "Person at 99,186; 12.3m at 182,387"},
    {"the same with labels 27 high", OneBox(100, 200, 301, 400, 1, 123, 4), 'D',
     "outline orange 98,198,303,402 of 4; fill amber 100,172,191,199; fill amber 169,373,232,400; "
     "Person at 101,172; 13m at 170,373"},
    {"the same in the planes", OneBox(100, 200, 301, 400, 1, 123, 4), 'B',
     "outline green 100,200,301,400 of 1; fill green 100,189,137,199; fill green 188,390,213,400; "
     "Person at 100,189; 12.3m at 188,390"},
    {"a car in a box as high as three labels", OneBox(40.9f, 60, 240, 96, 2, 999, 1), 'S',
     "outline green 40,60,238,95 of 1; fill green 40,48,59,60; fill green 39,97,75,109; car at 41,48; "
     "99.9m at 40,97"},
    {"a car in a box as high as three labels", OneBox(40.9f, 60, 240, 141, 2, 1000, 1), 'D',
     "outline green 40,60,240,141 of 1; fill green 40,41,80,59; fill green 40,143,103,170; car at 41,36; "
     "100m at 41,143"},
    {"a car in a box as high as three labels", OneBox(40.9f, 60, 240, 90, 2, 1000, 1), 'B',
     "outline green 40,60,240,90 of 1; fill green 40,49,59,59; fill green 40,92,71,102; car at 40,49; "
     "100.0m at 40,92"},
    {"nothing known", OneBox(10, 20, 30, 40, 0, 0, 1), 'S', ""},
    {"nothing known", OneBox(10, 20, 30, 40, 0, 0, 1), 'D', ""},
    {"nothing known", OneBox(10, 20, 30, 40, 0, 0, 1), 'B', "outline green 10,20,30,40 of 1"},
    {"at the top and beyond the right", OneBox(1900, -5, 3000, 40, 0, 5, 3), 'S',
     "outline green 1899,-1,1920,40 of 3; fill green 1899,-13,1952,-1; fill green 1900,40,1928,52; "
     "unknown at 1900,-13; 0.5m at 1901,40"},
    {"at the top and beyond the right", OneBox(1900, -5, 3000, 40, 0, 5, 3), 'D',
     "outline green 1899,-1,1921,41 of 3; fill green 1900,0,2004,27; fill green 1900,42,1936,69; "
     "unknown at 1901,0; 1m at 1901,42"},
    {"at the top and beyond the right", OneBox(1900, -5, 3000, 40, 0, 5, 3), 'B',
     "outline green 1900,0,1920,40 of 1; fill green 1904,30,1917,40; 0.5m at 1904,30"},
    {"on the last corner", OneBox(1920, 1080, 2000, 2000, 9, 1, 0), 'D',
     "outline green 1920,1080,1920,1080 of 0; fill green 1920,1052,1970,1079; "
     "fill green 1920,1082,1956,1109; Unk at 1921,1052; 1m at 1921,1082"},
    {"beyond the last corner", OneBox(1921, 1081, 2000, 2000, 9, 1, 1), 'D', ""},
    {"beyond the last corner", OneBox(1921, 1081, 2000, 2000, 9, 1, 1), 'B',
     "outline green 1921,1081,1920,1080 of 1; fill green 1921,1070,1940,1080; Unk at 1921,1070"},
    {"an end that is no number", OneBox(5, 5, kNan, kInf, 3, 0, 1), 'S',
     "outline green 5,5,1919,1079 of 1; fill green 5,-7,24,5; bus at 6,-7"},
    {"an end that is no number", OneBox(5, 5, kNan, kInf, 3, 0, 1), 'D',
     "outline green 5,5,1920,1080 of 1; fill green 5,0,55,27; bus at 6,0"},
    {"an end that is no number", OneBox(5, 5, kNan, kInf, 3, 0, 1), 'B',
     "outline green 5,5,1920,1080 of 1; fill green 5,0,24,10; bus at 5,0"},
    {"a begin that is no number", OneBox(kNan, 0, 5, 5, 3, 0, 1), 'D', ""},
};

TEST(Overlays, BoxesOfDriverAssistance) {
  for (const BoxCase& c : kBoxes)
    EXPECT_EQ(LaidOut(&c.record, c.backend), c.expected) << c.what;
}

TEST(Overlays, LabelsFollowAllShapesClassesFirst) {
  AlgRecord record = OneBox(100, 200, 300, 400, 3, 10, 0);
  record.count = 13;  // the record holds twelve
  for (size_t i = 1; i < kMaxBoxes; ++i) {
    record.left[i] = record.left[0];
    record.classId[i] = 7;
    record.distance[i] = static_cast<uint16_t>(10 * i + 10);
  }
  for (const char backend : {'S', 'D', 'B'}) {
    OverlayList list;
    LayOutRecord(list, &record, {1920, 1080, 1920, 1080}, StyleOf(backend));
    EXPECT_EQ(list.shapes.size(), 36u);
    ASSERT_EQ(list.labels.size(), 24u);
    EXPECT_STREQ(list.labels[0].text, "bus");
    EXPECT_STREQ(list.labels[11].text, "non-vehicle");
    EXPECT_EQ(list.labels[23].text[0], '1') << list.labels[23].text;
  }
}

TEST(Overlays, BoxesAreMappedBeforeTheyAreRounded) {
  const AlgRecord record = OneBox(101, 51, 301, 151, 4, 0, 2);
  EXPECT_EQ(LaidOut(&record, 'S', {400, 300, 200, 100}),
            "outline green 49,16,150,50 of 2; fill green 49,4,80,16; truck at 50,4");
  OverlayList list;
  LayOutRecord(list, &record, {400, 300, 200, 100}, SdlStyle(false));
  EXPECT_EQ(list.shapes.size(), 1u) << "without a font there are neither letters nor their background";
}

DsmRecord Monitored() {
  DsmRecord record{};
  record.pointSize = 3;
  record.pointCount = 4;
  const float x[] = {10.9f, 50, -70.5f, 3e9f}, y[] = {20, 60, 80.9f, 0};
  std::copy(std::begin(x), std::end(x), record.x);
  std::copy(std::begin(y), std::end(y), record.y);
  const float boxes[][4] = {{10, 20, 30, 40}, {-10, 20, 3000, 4000}, {1921, 20, 3000, 40},
                            {0, 0, 0, 40},    {0, 0, 40, 0},         {10.6f, 20.6f, 31.5f, 41.5f}};
  for (const auto& box : boxes) {
    const auto i = static_cast<size_t>(record.boxCount++);
    record.left[i] = box[0], record.top[i] = box[1], record.right[i] = box[2], record.bottom[i] = box[3];
  }
  return record;
}

TEST(Overlays, LandmarksAndFacesOfDriverMonitoring) {
  const DsmRecord record = Monitored();
  EXPECT_EQ(LaidOut(&record, 'S'),
            "disc green 7,17,13,23 of 3; disc green -73,77,-67,83 of 3; brackets green 4,14,36,46 of 6; "
            "brackets green -6,14,1926,1086 of 6; brackets green 1915,14,1926,46 of 6; "
            "brackets green 4,14,36,46 of 6");
  EXPECT_EQ(LaidOut(&record, 'D'),
            "disc green 7,17,13,23 of 3; disc green 47,57,53,63 of 3; disc green -73,77,-67,83 of 3; "
            "disc green -2147483651,-3,-2147483645,3 of 3; brackets green 9,19,31,41 of 3; "
            "brackets green -1,19,1921,1081 of 3; brackets green 9,19,32,42 of 3");
  DsmRecord none = record;
  none.pointCount = 0;
  none.boxCount = -1;
  EXPECT_EQ(LaidOut(&none, 'D'), "");
}

TEST(Overlays, NothingIsDrawnBehindALandmarkThatCoversAll) {
  DsmRecord record{};
  record.pointSize = 65535;
  record.pointCount = 68;
  EXPECT_EQ(LaidOut(&record, 'D'), "disc green -65535,-65535,65535,65535 of 65535");
}

/// A display on which shapes are drawn point by point and line by line.
class Canvas {
 public:
  static constexpr int kWidth = 60, kHeight = 40;
  using Pixels = std::vector<std::string>;

  void Point(int64_t x, int64_t y) {
    if (x >= 0 && y >= 0 && x < kWidth && y < kHeight)
      m_rows[static_cast<size_t>(y)][static_cast<size_t>(x)] = '#';
  }
  void Line(int64_t x1, int64_t y1, int64_t x2, int64_t y2) {
    for (int64_t y = std::min(y1, y2); y <= std::max(y1, y2); ++y)
      for (int64_t x = std::min(x1, x2); x <= std::max(x1, x2); ++x)
        Point(x, y);
  }
  void Draw(const OverlayShape& s) {
    const auto& [l, t, r, b] = s.corners;
    if (s.kind == OverlayShape::Kind::Fill && r > l && b > t) Line(l, t, r - 1, b - 1);
    for (int64_t n = 0; n < s.size && s.kind == OverlayShape::Kind::Outline; ++n) {
      Line(l + n, t + n, r - n, t + n), Line(l + n, b - n, r - n, b - n);
      Line(l + n, t + n, l + n, b - n), Line(r - n, t + n, r - n, b - n);
    }
    for (int64_t n = 0; n < s.size && s.kind == OverlayShape::Kind::Brackets; ++n)
      Arms({l + n, t + n, r - n, b - n}, s.parts);
    for (int64_t i = 0; i < 2 * s.size && s.kind == OverlayShape::Kind::Disc; ++i)
      for (int64_t j = 0; j < 2 * s.size; ++j)
        if (const int64_t dx = s.size - i, dy = s.size - j; dx * dx + dy * dy <= int64_t{s.size} * s.size)
          Point(l + s.size + dx, t + s.size + dy);
  }
  const Pixels& Rows() const { return m_rows; }

 private:
  void Arms(const WideRect& c, int64_t parts) {
    const int64_t dx = (c.right - c.left) / parts, dy = (c.bottom - c.top) / parts;
    for (const int64_t y : {c.top, c.bottom}) {
      Line(c.left, y, c.left + dx, y);
      Line(c.left + (parts - 1) * dx, y, c.right, y);
    }
    for (const int64_t x : {c.left, c.right}) {
      Line(x, c.top, x, c.top + dy);
      Line(x, c.top + (parts - 1) * dy, x, c.bottom);
    }
  }

  Pixels m_rows = Pixels(kHeight, std::string(kWidth, '.'));
};

TEST(Overlays, ShapesAreThePixelsThatPointsAndLinesWouldMake) {
  std::mt19937 random(99);
  const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<uint32_t>(limit)); };
  for (int n = 0; n < 4000; ++n) {
    const int64_t x = below(90) - 15, y = below(70) - 15;
    OverlayShape shape{.kind = static_cast<OverlayShape::Kind>(n % 4),
                       .colour = kOverlayGreen,
                       .corners = {x, y, x + below(60) - 9, y + below(60) - 9},
                       .size = below(4)     ? below(6)
                               : n % 8 == 3 ? 30 + below(30)
                                            : below(50),
                       .parts = below(2) ? 5 : 8};
    if (shape.kind == OverlayShape::Kind::Disc) shape.corners = WideRect{x, y, x, y}.Grown(shape.size);
    Canvas expected, seen;
    expected.Draw(shape);
    RectList pixels;
    AppendPixels(pixels, shape, Canvas::kWidth, Canvas::kHeight);
    for (const PixelRect& r : pixels) {
      ASSERT_TRUE(!r.Empty() && Intersect(r, {0, 0, Canvas::kWidth, Canvas::kHeight}) == r) << n;
      seen.Draw({.colour = kOverlayGreen, .corners = {r.left, r.top, r.right, r.bottom}});
    }
    ASSERT_EQ(seen.Rows(), expected.Rows()) << n;
    const bool all = expected.Rows() == Canvas::Pixels(Canvas::kHeight, std::string(Canvas::kWidth, '#'));
    if (shape.kind == OverlayShape::Kind::Disc) {
      ASSERT_EQ(DiscCovers(shape, Canvas::kWidth, Canvas::kHeight), all) << n;
    }
  }
}

}  // namespace
