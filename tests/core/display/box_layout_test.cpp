// SPDX-License-Identifier: MIT
#include "display/overlay_layout.h"

#include <gmock/gmock.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <random>

#include "display/overlay_shapes.h"
#include "point_canvas.h"
#include "support/one_box.h"

namespace {

constexpr DisplayMap kOneToOne{200, 150, 200, 150};

using Rows = std::vector<std::string>;

char MarkOf(const OverlayColor& color) {
  return color == kOverlayOrange ? 'o' : color == kOverlayGreen ? 'g' : '?';
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

TEST(AlgLayout, PlacesLabelsByTheOutermostAndInnermostRectangle) {
  OverlayList layout;
  const auto layOut = [&](const AlgRecord& record) {
    LayOutRecord(layout, &record, kOneToOne, SdlStyle(true));
  };
  layOut(OneBox(40, 60, 140, 120, 2, 123, 4));
  ASSERT_EQ(layout.labels.size(), 2u);
  EXPECT_STREQ(layout.labels[0].text, "car");
  EXPECT_EQ(layout.labels[0].x, 39);
  EXPECT_EQ(layout.labels[0].y, 46);
  // Innermost: 41, 61, 98 x 58. "12.3m" is 36 wide: 41 + 49 - 18 and 61 + 58 - 12.
  EXPECT_STREQ(layout.labels[1].text, "12.3m");
  EXPECT_EQ(layout.labels[1].x, 72);
  EXPECT_EQ(layout.labels[1].y, 107);
  EXPECT_EQ(layout.labels[1].area, (PixelRect{71, 107, 107, 119}));

  layOut(OneBox(40, 60, 140, 96, 2, 123, 1));
  EXPECT_EQ(layout.labels[1].x, 40);
  EXPECT_EQ(layout.labels[1].y, 97);

  layOut(OneBox(10, 0, 60, 40, 1, 0, 1));
  ASSERT_EQ(layout.labels.size(), 1u);
  EXPECT_EQ(layout.labels[0].y, -12);
  EXPECT_EQ(layout.shapes[0].color, kOverlayOrange);
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

template <class Record>
void Scramble(Record& record, std::mt19937& random) {
  for (size_t at = 0; at < sizeof(record); at += 4) {
    const auto bits = static_cast<uint32_t>(random());
    std::memcpy(reinterpret_cast<char*>(&record) + at, &bits, 4);
  }
}

TEST(Layouts, KeepEveryRectangleOnTheDisplayForAnyBits) {
  std::mt19937 random(3);
  const DisplayMap map{1280, 720, 640, 480};
  for (int n = 0; n < 300; ++n) {
    AlgRecord alg;
    DsmRecord dsm;
    Scramble(alg, random);
    Scramble(dsm, random);
    alg.lineWidth %= 300;
    dsm.pointSize %= 300;
    OverlayList layout;
    for (const RecordView record : {RecordView(&alg), RecordView(&dsm)}) {
      LayOutRecord(layout, record, map, SdlStyle(true));
      for (const OverlayShape& shape : layout.shapes)
        for (const PixelRect& r : PixelsOf(shape, map))
          ASSERT_TRUE(r.left >= 0 && r.top >= 0 && !r.Empty() && r.right <= 640 && r.bottom <= 480);
    }
  }
}

}  // namespace
