// SPDX-License-Identifier: MIT
#include "display/overlay_layout.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdio>
#include <functional>
#include <random>
#include <sstream>
#include <tuple>

#include "display/overlay_shapes.h"
#include "point_canvas.h"
#include "support/one_box.h"

namespace {

constexpr DisplayMap kOneToOne{200, 150, 200, 150};

using Rows = std::vector<std::string>;

char MarkOf(const OverlayColor& color) {
  return color == kOverlayOrange ? 'o' : color == kOverlayAmber ? 'a' : color == kOverlayGreen ? 'g' : '?';
}

RectList PixelsOf(const OverlayShape& shape, const DisplayMap& map) {
  RectList pixels;
  AppendPixels(pixels, shape, map.displayWidth, map.displayHeight);
  return pixels;
}

Rows Paint(const OverlayList& layout, const DisplayMap& map) {
  PointCanvas canvas(map.displayWidth, map.displayHeight);
  for (const OverlayShape& shape : layout.shapes) {
    for (const PixelRect& rect : PixelsOf(shape, map))
      canvas.Rect(rect, MarkOf(shape.color));
  }
  return canvas.Picture();
}

/// Driver-assistance boxes step by step, with labels.
Rows PaintedByHand(const AlgRecord& r, const DisplayMap& map) {
  PointCanvas canvas(map.displayWidth, map.displayHeight);
  const float sx = static_cast<float>(map.displayWidth), sy = static_cast<float>(map.displayHeight);
  const float vx = static_cast<float>(map.videoWidth), vy = static_cast<float>(map.videoHeight);
  for (int i = 0; i < r.count; ++i) {
    if (r.classId[i] == 0 && r.distance[i] == 0) continue;
    const char mark = r.classId[i] == 1 ? 'o' : 'g';
    const float x0 = std::fmax(r.left[i] * sx / vx, 0.0f), y0 = std::fmax(r.top[i] * sy / vy, 0.0f);
    const float x1 = std::fmin(r.right[i] * sx / vx, sx), y1 = std::fmin(r.bottom[i] * sy / vy, sy);
    int x = static_cast<int>(x0), y = static_cast<int>(y0);
    int w = static_cast<int>(x1 - x0), h = static_cast<int>(y1 - y0);
    const int inset = r.lineWidth / 2;
    x -= inset, y -= inset, w += 2 * inset, h += 2 * inset;
    const int outerX = x, outerY = y;
    for (int n = 0; n < r.lineWidth; ++n) {
      if (n) ++x, ++y, w -= 2, h -= 2;
      canvas.Outline(x, y, w, h, mark);
    }
    char name[kClassLabelBytes];
    CopyClassLabel(name, r.classId[i]);
    canvas.Area(outerX, outerY - 12, static_cast<int>(std::string(name).size()) * 6 + (r.classId[i] ? 1 : 11),
                12, mark);
    if (!r.distance[i]) continue;
    char text[16];
    const int label = std::snprintf(text, sizeof(text), "%.1fm", r.distance[i] / 10.0) * 36 / 5;
    const bool inside = w > label && h > 36;
    canvas.Area((inside ? x + w / 2 - label / 2 : x) - 1, inside ? y + h - 12 : y + h + 1, label, 12, mark);
  }
  return canvas.Picture();
}

TEST(AlgLayout, PaintsWhatPointsAndLinesWould) {
  std::mt19937 random(99);
  const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<uint32_t>(limit)); };
  for (int n = 0; n < 200; ++n) {
    const DisplayMap map{40 + below(300), 40 + below(200), 30 + below(160), 30 + below(120)};
    AlgRecord record{};
    record.count = static_cast<uint16_t>(1 + below(12));
    record.lineWidth = static_cast<uint16_t>(below(4) ? below(5) : below(40));
    for (int i = 0; i < record.count; ++i) {
      record.left[i] = static_cast<float>(below(4000) - 400) / 10.0f;
      record.top[i] = static_cast<float>(below(2500) - 300) / 10.0f;
      record.right[i] = record.left[i] + static_cast<float>(below(2000)) / 9.0f;
      record.bottom[i] = record.top[i] + static_cast<float>(below(2000)) / 9.0f;
      record.classId[i] = static_cast<uint16_t>(below(10));
      record.distance[i] = static_cast<uint16_t>(below(3) * below(700));
    }
    OverlayList layout;
    LayOutRecord(layout, &record, map, SdlStyle(true));
    ASSERT_EQ(Paint(layout, map), PaintedByHand(record, map)) << n;
  }
}

/// The first shape's corners, and each label's text, area and where its letters begin.
std::string Described(RecordView record, const DisplayMap& map, const OverlayStyle& style) {
  OverlayList list;
  LayOutRecord(list, record, map, style);
  std::ostringstream text;
  if (list.shapes.empty()) return {};
  const WideRect& c = list.shapes[0].corners;
  text << c.left << ' ' << c.top << ' ' << c.right << ' ' << c.bottom << ' ' << MarkOf(list.shapes[0].color);
  for (const OverlayLabel& l : list.labels)
    text << "; " << l.text << ' ' << l.area.left << ' ' << l.area.top << ' ' << l.area.right << ' '
         << l.area.bottom << " at " << l.x << ' ' << l.y;
  if (!list.labels.empty()) text << ' ' << MarkOf(list.shapes[1].color);
  return text.str();
}

TEST(AlgLayout, PlacesOutlinesAndLabelsAsTheStyleWants) {
  const float nan = std::nanf("");
  const std::pair<AlgRecord, const char*> sdl[] = {
      {OneBox(40, 60, 140, 120, 2, 123, 4),
       "38 58 141 121 g; car 38 46 57 58 at 39 46; 12.3m 71 107 107 119 at 72 107 g"},
      {OneBox(40, 60, 140, 96, 2, 123, 1),
       "40 60 139 95 g; car 40 48 59 60 at 41 48; 12.3m 39 97 75 109 at 40 97 g"},
      {OneBox(10, 0, 60, 40, 1, 0, 1), "10 0 59 39 o; Person 10 -12 47 0 at 11 -12 o"}};
  for (const auto& [record, expected] : sdl)
    EXPECT_EQ(Described(&record, kOneToOne, SdlStyle(true)), expected);
  // Label fonts are 27 high; distances are rounded up.
  const DisplayMap frame{1920, 1080, 1920, 1080};
  const std::pair<AlgRecord, const char*> direct3D[] = {
      {OneBox(10, 10, 20, 20, 0, 0), ""},
      {OneBox(10, 10, 20, 20, 0, 1), "10 10 20 20 g; unknown 10 0 114 27 at 11 0; 1m 10 22 46 49 at 11 22 g"},
      {OneBox(1921, 10, 2000, 20, 1, 0), ""},
      {OneBox(10, 1081, 20, 2000, 1, 0), ""},
      {OneBox(nan, 0, 5, 5, 3, 1), ""},
      {OneBox(0, 0, nan, 5, 3, 0), "0 0 1920 5 g; bus 0 0 50 27 at 1 0 g"},
      {OneBox(1920, 1080, 2000, 2000, 1, 0),
       "1920 1080 1920 1080 o; Person 1920 1052 2011 1079 at 1921 1052 a"},
      {OneBox(-5, 20.9f, 3000, 40, 1, 0), "0 20 1920 40 o; Person 0 0 91 27 at 1 0 a"},
      {OneBox(100, 100, 200, 200, 1, 0, 1), "100 100 200 200 o; Person 100 72 191 99 at 101 72 a"},
      {OneBox(100, 100, 200, 200, 1, 0, 5), "98 98 202 202 o; Person 100 72 191 99 at 101 72 a"},
      {OneBox(100, 200, 300, 400, 1, 0), "100 200 300 400 o; Person 100 172 191 199 at 101 172 a"},
      {OneBox(100, 200, 300, 400, 2, 0), "100 200 300 400 g; car 100 181 140 199 at 101 176 g"},
      {OneBox(100, 9, 300, 400, 3, 0), "100 9 300 400 g; bus 100 0 150 27 at 101 0 g"},
      {OneBox(100, 200, 130, 230, 3, 123),
       "100 200 130 230 g; bus 100 172 150 199 at 101 172; 13m 100 232 163 259 at 101 232 g"},
      {OneBox(100, 200, 301, 400, 3, 1000),
       "100 200 301 400 g; bus 100 172 150 199 at 101 172; 100m 169 373 232 400 at 170 373 g"},
      {OneBox(100, 200, 301, 281, 3, 1),
       "100 200 301 281 g; bus 100 172 150 199 at 101 172; 1m 100 283 136 310 at 101 283 g"},
      {OneBox(100, 1080, 120, 1200, 0, 50),
       "100 1080 120 1080 g; unknown 100 1052 204 1079 at 101 1052; 5m 100 1082 136 1109 at 101 1082 g"}};
  for (const auto& [record, expected] : direct3D)
    EXPECT_EQ(Described(&record, frame, Direct3DStyle(1080)), expected);
}

TEST(DsmLayout, PaintsWhatPointsAndLinesWould) {
  std::mt19937 random(17);
  const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<uint32_t>(limit)); };
  for (int n = 0; n < 200; ++n) {
    const DisplayMap map{160, 120, 160, 120};
    DsmRecord record{};
    record.pointSize = static_cast<uint16_t>(below(5) ? below(5) : below(30));
    record.pointCount = static_cast<uint16_t>(below(69));
    record.boxCount = below(14) - 2;
    PointCanvas canvas(160, 120);
    for (int i = 0; i < record.pointCount; ++i) {
      record.x[i] = static_cast<float>(below(200) - 20);
      record.y[i] = static_cast<float>(below(160) - 20);
      if (i % 2 == 0)
        canvas.Disc(static_cast<int>(record.x[i]), static_cast<int>(record.y[i]), record.pointSize, 'g');
    }
    for (int i = 0; i < std::min(record.boxCount, 12); ++i) {
      record.left[i] = static_cast<float>(below(200) - 20);
      record.top[i] = static_cast<float>(below(160) - 20);
      record.right[i] = std::fmax(record.left[i] + static_cast<float>(below(90)), 0.0f);
      record.bottom[i] = std::fmax(record.top[i] + static_cast<float>(below(90)), 0.0f);
      const int right = std::min(static_cast<int>(record.right[i]), 160);
      const int bottom = std::min(static_cast<int>(record.bottom[i]), 120);
      if (right == 0 || bottom == 0) continue;
      const int left = std::max(static_cast<int>(record.left[i]), 0);
      const int top = std::max(static_cast<int>(record.top[i]), 0);
      const int t = 2 * record.pointSize;
      for (int k = 0; k < t; ++k)
        canvas.Corners(left - t + k, top - t + k, right - left + 2 * (t - k), bottom - top + 2 * (t - k),
                       'g');
    }
    OverlayList layout;
    LayOutRecord(layout, &record, map, SdlStyle(true));
    ASSERT_EQ(Paint(layout, map), canvas.Picture()) << n;
  }
}

TEST(DsmLayout, ClampsSkipsAndGrowsBoxesAsTheStyleWants) {
  const std::tuple<float, float, float, float, uint16_t, const char*> cases[] = {
      {10, 20, 30, 40, 3, "9 19 31 41 g"},
      {-10, 20, 3000, 4000, 3, "-1 19 1921 1081 g"},
      {1921, 20, 3000, 40, 3, ""},
      {0, 0, 0, 40, 3, ""},
      {0, 0, 40, 0, 3, ""},
      {10, 20, 30, 40, 1, "10 20 30 40 g"}};
  for (const auto& [left, top, right, bottom, size, expected] : cases) {
    DsmRecord record{};
    record.pointSize = size;
    record.boxCount = 12;
    record.left[11] = left, record.top[11] = top, record.right[11] = right, record.bottom[11] = bottom;
    EXPECT_EQ(Described(&record, {1920, 1080, 1920, 1080}, Direct3DStyle(1080)), expected);
  }
}

template <class Record>
Record Scrambled(std::mt19937& random) {
  std::array<uint32_t, sizeof(Record) / 4> bits;
  std::generate(bits.begin(), bits.end(), std::ref(random));
  return std::bit_cast<Record>(bits);
}

TEST(Layouts, KeepEveryRectangleOnTheDisplayForAnyBits) {
  std::mt19937 random(3);
  const DisplayMap map{1280, 720, 640, 480};
  for (int n = 0; n < 300; ++n) {
    auto alg = Scrambled<AlgRecord>(random);
    auto dsm = Scrambled<DsmRecord>(random);
    alg.lineWidth %= 300;
    dsm.pointSize %= 300;
    OverlayList layout;
    for (const OverlayStyle& style : {SdlStyle(true), Direct3DStyle(720), BurnInStyle()})
      for (const RecordView record : {RecordView(&alg), RecordView(&dsm)}) {
        LayOutRecord(layout, record, map, style);
        for (const OverlayShape& shape : layout.shapes)
          for (const PixelRect& r : PixelsOf(shape, map))
            ASSERT_TRUE(r.left >= 0 && r.top >= 0 && !r.Empty() && r.right <= 640 && r.bottom <= 480);
      }
  }
}

}  // namespace
