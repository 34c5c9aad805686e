// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <climits>

#include "backends/ddraw/draw_layout.h"

namespace {

TEST(DrawnArea, IsThePlayRectangleOrTheClientArea) {
  constexpr PixelRect kClient{0, 0, 640, 480};
  EXPECT_EQ(DrawnArea({10, 20, 30, 40}, kClient), (PixelRect{10, 20, 30, 40}));
  EXPECT_EQ(DrawnArea({-10, -20, 700, 500}, kClient), (PixelRect{-10, -20, 700, 500}));
  for (const PixelRect& empty : {PixelRect{}, PixelRect{5, 5, 5, 9}, PixelRect{9, 9, 5, 5}})
    EXPECT_EQ(DrawnArea(empty, kClient), kClient);
  EXPECT_TRUE(DrawnArea({}, {}).Empty()) << "a minimised window";
  EXPECT_TRUE(DrawnArea({0, 0, 8193, 10}, kClient).Empty());
  EXPECT_TRUE(DrawnArea({INT_MIN, INT_MIN, INT_MAX, INT_MAX}, kClient).Empty());
  EXPECT_TRUE(DrawnArea({INT_MAX - 1, 0, INT_MAX, 10}, kClient).Empty());
}

TEST(CutToScreen, KeepsSourceAndTargetTogether) {
  constexpr PixelRect kScreen{-100, 0, 1000, 800};
  struct {
    int x, y;
    PixelRect source, target;
  } cases[] = {
      {10, 20, {0, 0, 200, 100}, {10, 20, 210, 120}},
      {-150, -30, {50, 30, 200, 100}, {-100, 0, 50, 70}},
      {900, 750, {0, 0, 100, 50}, {900, 750, 1000, 800}},
      {1000, 0, {}, {}},
      {0, -100, {}, {}},
  };
  for (const auto& c : cases) {
    const ScreenCopy copy = CutToScreen(c.x, c.y, 200, 100, kScreen);
    EXPECT_EQ(copy.source, c.source) << c.x << "," << c.y;
    EXPECT_EQ(copy.target, c.target) << c.x << "," << c.y;
  }
}

}  // namespace
