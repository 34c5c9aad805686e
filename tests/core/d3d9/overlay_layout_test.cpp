// SPDX-License-Identifier: MIT
#include "display/overlay_layout.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>
#include <string>

#include "support/one_box.h"

namespace {

struct FrameSize {
  int32_t width, height;
};
constexpr FrameSize kFrame{1920, 1080};  // label fonts are 27 high

struct LabelEntry {
  std::string text;
  PixelRect rect;
};
struct AlgBoxLayout {
  PixelRect outline, typeBackground;
  LabelEntry typeLabel;
  uint32_t labelColor = 0;
  std::optional<LabelEntry> distanceLabel;
};

PixelRect ToPixels(const WideRect& r) {
  return {static_cast<int32_t>(r.left), static_cast<int32_t>(r.top), static_cast<int32_t>(r.right),
          static_cast<int32_t>(r.bottom)};
}

OverlayList ListOf(RecordView record, const FrameSize& frame) {
  OverlayList list;
  LayOutRecord(list, record, {frame.width, frame.height, frame.width, frame.height},
               Direct3DStyle(frame.height));
  return list;
}

std::optional<AlgBoxLayout> LayOutAlgBox(const AlgRecord& record, int, const FrameSize& frame) {
  const OverlayList list = ListOf(&record, frame);
  if (list.shapes.empty()) return std::nullopt;
  AlgBoxLayout layout;
  layout.outline = ToPixels(list.shapes[0].corners);
  layout.typeBackground = list.labels[0].area;
  layout.typeLabel = {list.labels[0].text, list.labels[0].area};
  layout.typeLabel.rect.top = list.labels[0].y;
  const OverlayColor& c = list.shapes[1].color;
  layout.labelColor = 0xFF000000u | uint32_t{c.r} << 16 | uint32_t{c.g} << 8 | c.b;
  if (list.labels.size() > 1) layout.distanceLabel = {list.labels[1].text, list.labels[1].area};
  return layout;
}

std::optional<PixelRect> LayOutDsmBox(const DsmRecord& record, int, const FrameSize& frame) {
  const OverlayList list = ListOf(&record, frame);
  if (list.shapes.empty()) return std::nullopt;
  return ToPixels(list.shapes[0].corners);
}

AlgBoxLayout Layout(const AlgRecord& record) {
  const auto layout = LayOutAlgBox(record, 0, kFrame);
  EXPECT_TRUE(layout);
  return layout.value_or(AlgBoxLayout{});
}

TEST(AlgBoxLayout, SkipsResultsWithNothingToShow) {
  EXPECT_FALSE(LayOutAlgBox(OneBox(10, 10, 20, 20, 0, 0), 0, kFrame));
  EXPECT_TRUE(LayOutAlgBox(OneBox(10, 10, 20, 20, 0, 1), 0, kFrame));
  EXPECT_FALSE(LayOutAlgBox(OneBox(1921, 10, 2000, 20, 1, 0), 0, kFrame));
  EXPECT_FALSE(LayOutAlgBox(OneBox(10, 1081, 20, 2000, 1, 0), 0, kFrame));
  EXPECT_TRUE(LayOutAlgBox(OneBox(1920, 1080, 2000, 2000, 1, 0), 0, kFrame));
}

TEST(AlgBoxLayout, ClampsAndGrowsTheOutline) {
  EXPECT_EQ(Layout(OneBox(-5, 20.9f, 3000, 40, 1, 0, 0)).outline, (PixelRect{0, 20, 1920, 40}));
  EXPECT_EQ(Layout(OneBox(100, 100, 200, 200, 1, 0, 1)).outline, (PixelRect{100, 100, 200, 200}));
  EXPECT_EQ(Layout(OneBox(100, 100, 200, 200, 1, 0, 5)).outline, (PixelRect{98, 98, 202, 202}));
}

TEST(AlgBoxLayout, NamesTheTypeAboveTheBox) {
  const AlgBoxLayout person = Layout(OneBox(100, 200, 300, 400, 1, 0));
  EXPECT_EQ(person.typeLabel.text, "Person");
  EXPECT_EQ(person.typeBackground, (PixelRect{100, 172, 100 + 81 + 10, 199}));
  EXPECT_EQ(person.typeLabel.rect, person.typeBackground);
  EXPECT_EQ(person.labelColor, 0xFFFFC500u);
  EXPECT_FALSE(person.distanceLabel);

  const AlgBoxLayout car = Layout(OneBox(100, 200, 300, 400, 2, 0));
  EXPECT_EQ(car.typeLabel.text, "car");
  EXPECT_EQ(car.typeBackground, (PixelRect{100, 181, 140, 199})) << "two thirds high, no margin";
  EXPECT_EQ(car.typeLabel.rect.top, 176);
  EXPECT_EQ(car.labelColor, 0xFF00FF00u);

  EXPECT_EQ(Layout(OneBox(100, 9, 300, 400, 3, 0)).typeBackground.top, 0);
}

TEST(AlgBoxLayout, PutsTheDistanceInsideLargeBoxesAndBelowSmallOnes) {
  const AlgBoxLayout small = Layout(OneBox(100, 200, 130, 230, 3, 123));
  ASSERT_TRUE(small.distanceLabel);
  EXPECT_EQ(small.distanceLabel->text, "13m") << "tenths of a metre, rounded up";
  EXPECT_EQ(small.distanceLabel->rect, (PixelRect{100, 232, 100 + 62 + 1, 259}));

  const AlgBoxLayout large = Layout(OneBox(100, 200, 301, 400, 3, 1000));
  EXPECT_EQ(large.distanceLabel->text, "100m");
  EXPECT_EQ(large.distanceLabel->rect, (PixelRect{169, 373, 169 + 62 + 1, 400}));

  EXPECT_EQ(Layout(OneBox(100, 200, 301, 281, 3, 1)).distanceLabel->rect.top, 283) << "exactly three labels";
  EXPECT_EQ(Layout(OneBox(100, 1080, 120, 1200, 0, 50)).distanceLabel->rect.top, 1082);
}

TEST(AlgBoxLayout, TakesAnyNumbers) {
  constexpr float kInf = std::numeric_limits<float>::infinity();
  const float wild[] = {-kInf, -3e38f, -1, 0, 1e10f, 3e38f, kInf, std::nanf("")};
  for (float a : wild)
    for (float b : wild)
      for (uint16_t thickness : {uint16_t{0}, uint16_t{65535}}) {
        const AlgRecord record = OneBox(a, b, b, a, 3, 65535, thickness);
        if (const auto layout = LayOutAlgBox(record, 0, kFrame)) {
          EXPECT_GE(layout->typeBackground.left, 0);
          EXPECT_LE(layout->typeBackground.top, kFrame.height);
          EXPECT_GE(layout->distanceLabel->rect.left, 0);
        }
      }
  EXPECT_FALSE(LayOutAlgBox(OneBox(std::nanf(""), 0, 5, 5, 3, 1), 0, kFrame));
  EXPECT_EQ(Layout(OneBox(0, 0, std::nanf(""), 5, 3, 0, 0)).outline.right, 1920);
}

TEST(DsmBoxLayout, ClampsSkipsAndGrows) {
  DsmRecord record{};
  record.pointSize = 3;
  record.boxCount = 12;
  const auto layOut = [&](float left, float top, float right, float bottom) {
    record.left[11] = left;
    record.top[11] = top;
    record.right[11] = right;
    record.bottom[11] = bottom;
    return LayOutDsmBox(record, 11, kFrame);
  };
  EXPECT_EQ(layOut(10, 20, 30, 40), (PixelRect{9, 19, 31, 41}));
  EXPECT_EQ(layOut(-10, 20, 3000, 4000), (PixelRect{-1, 19, 1921, 1081}));
  EXPECT_EQ(layOut(1921, 20, 3000, 40), std::nullopt);
  EXPECT_EQ(layOut(0, 0, 0, 40), std::nullopt);
  EXPECT_EQ(layOut(0, 0, 40, 0), std::nullopt);
  record.pointSize = 1;
  EXPECT_EQ(layOut(10, 20, 30, 40), (PixelRect{10, 20, 30, 40}));
}

}  // namespace
