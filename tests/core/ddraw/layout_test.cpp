// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <climits>

#include "backends/ddraw/draw_layout.h"
#include "backends/ddraw/even_frame.h"
#include "support/frames.h"

namespace {

using testing::ElementsAre;

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

TEST(EvenFrame, RepeatsTheLastColumnAndRow) {
  TestFrame odd(3, 3, 4, 2);
  odd.y = {1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0};
  odd.u = {50, 0};
  odd.v = {60, 0};
  EvenFrame even;
  const auto whole = even.Complete(odd.View(), 3, 3);
  ASSERT_TRUE(whole);
  ASSERT_EQ(whole->strideY, 4);
  EXPECT_THAT(std::vector<uint8_t>(whole->y, whole->y + 16),
              ElementsAre(1, 2, 3, 3, 4, 5, 6, 6, 7, 8, 9, 9, 7, 8, 9, 9));
  EXPECT_THAT(std::vector<uint8_t>(whole->u, whole->u + 4), ElementsAre(50, 50, 50, 50));
  EXPECT_THAT(std::vector<uint8_t>(whole->v, whole->v + 4), ElementsAre(60, 60, 60, 60));

  TestFrame plain(4, 2);
  EXPECT_EQ(even.Complete(plain.View(), 4, 2)->y, plain.y.data());
}

}  // namespace
