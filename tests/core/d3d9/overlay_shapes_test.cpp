// SPDX-License-Identifier: MIT
#include "backends/d3d9/overlay_shapes.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace {

TEST(OverlayShapes, FillRectanglesWithTwoClockwiseTriangles) {
  const auto v = FilledRect({1, 2, 11, 22}, kAmber);
  const float x[] = {1, 11, 1, 11, 1, 11};
  const float y[] = {2, 22, 22, 22, 2, 2};
  for (size_t i = 0; i < v.size(); ++i) {
    EXPECT_EQ(v[i].x, x[i]);
    EXPECT_EQ(v[i].y, y[i]);
    EXPECT_EQ(v[i].z, 0);
    EXPECT_EQ(v[i].rhw, 1);
    EXPECT_EQ(v[i].color, kAmber);
  }
}

TEST(OverlayShapes, BracketsLeaveTheMiddleOfEverySideOpen) {
  const auto v = CornerBrackets({10, 20, 62, 123}, kGreen);  // arms of 10 and 20
  const int expected[][2] = {{10, 20},  {20, 20},  {50, 20},  {62, 20},  {62, 20},  {62, 40},
                             {62, 100}, {62, 123}, {50, 123}, {62, 123}, {10, 123}, {20, 123},
                             {10, 100}, {10, 123}, {10, 20},  {10, 40}};
  for (size_t i = 0; i < v.size(); ++i) {
    EXPECT_EQ(v[i].x, expected[i][0]) << i;
    EXPECT_EQ(v[i].y, expected[i][1]) << i;
  }
}

TEST(OverlayShapes, OutlinesNestInward) {
  EXPECT_EQ(NestedRect({10, 20, 30, 40}, 3), (PixelRect{13, 23, 27, 37}));
  EXPECT_TRUE(SidesVisible({-5, -5, 50, 2000}, 100, 100));
  EXPECT_FALSE(SidesVisible({-5, -5, 100, 100}, 100, 100));
}

using Pixels = std::vector<std::pair<int64_t, int64_t>>;

Pixels Disc(int64_t x, int64_t y, int64_t radius, int32_t width, int32_t height) {
  Pixels pixels;
  ForEachDiscPixel(x, y, radius, width, height, [&](int64_t px, int64_t py) { pixels.emplace_back(px, py); });
  return pixels;
}

TEST(OverlayShapes, DiscsHaveTheirPixelsInOrder) {
  EXPECT_EQ(Disc(10, 20, 1, 100, 100), (Pixels{{11, 20}, {10, 21}, {10, 20}}));
  EXPECT_TRUE(Disc(10, 20, 0, 100, 100).empty());
  Pixels plain;
  for (int i = 0; i < 14; ++i)
    for (int j = 0; j < 14; ++j)
      if ((7 - i) * (7 - i) + (7 - j) * (7 - j) <= 49) plain.emplace_back(50 + 7 - i, 50 + 7 - j);
  EXPECT_EQ(Disc(50, 50, 7, 100, 100), plain);
}

TEST(OverlayShapes, TellWhetherADiscCoversThePicture) {
  for (const auto& [x, y] : {std::pair{0, 0}, {7, 4}, {14, 0}, {15, 9}, {-3, 20}})
    for (int64_t radius = 0; radius < 40; ++radius)
      EXPECT_EQ(DiscCovers(x, y, radius, 15, 10), Disc(x, y, radius, 15, 10).size() == 150)
          << x << "," << y << " radius " << radius;
}

TEST(OverlayShapes, DiscsEndAtTheFrame) {
  EXPECT_EQ(Disc(50, 50, 65535, 100, 80).size(), 8000u) << "a disc that covers everything";
  for (const auto& [x, y] : Disc(0, 79, 6, 100, 80)) {
    EXPECT_TRUE(x >= 0 && x < 100 && y >= 0 && y < 80);
  }
  EXPECT_TRUE(Disc(std::numeric_limits<int32_t>::min(), 10, 65535, 100, 100).empty());
  EXPECT_TRUE(Disc(std::numeric_limits<int32_t>::max(), 10, 65535, 100, 100).empty());
}

TEST(OverlayShapes, TurnColorRefsIntoOpaqueArgb) {
  EXPECT_EQ(OpaqueArgb(0x77332211u), 0xFF112233u);
}

}  // namespace
