// SPDX-License-Identifier: MIT
#include "display/overlay_shapes.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>

namespace {

TEST(OverlayShapes, OutlinesNestInward) {
  EXPECT_EQ((WideRect{10, 20, 30, 40}).Grown(-3), (WideRect{13, 23, 27, 37}));
  EXPECT_TRUE(SidesVisible({-5, -5, 50, 2000}, 100, 100));
  EXPECT_FALSE(SidesVisible({-5, -5, 100, 100}, 100, 100));
}

using Pixels = std::multiset<std::pair<int64_t, int64_t>>;

OverlayShape DiscShape(int64_t x, int64_t y, int64_t radius) {
  return {.kind = OverlayShape::Kind::Disc,
          .color = kOverlayGreen,
          .corners = WideRect{x, y, x, y}.Grown(radius),
          .size = static_cast<int32_t>(radius)};
}

Pixels Disc(int64_t x, int64_t y, int64_t radius, int32_t width, int32_t height) {
  Pixels pixels;
  RectList parts;
  AppendPixels(parts, DiscShape(x, y, radius), width, height);
  for (const PixelRect& part : parts)
    for (int32_t py = part.top; py < part.bottom; ++py)
      for (int32_t px = part.left; px < part.right; ++px)
        pixels.emplace(px, py);
  return pixels;
}

TEST(OverlayShapes, DiscsHaveTheirPixelsOnce) {
  for (const auto& [x, y] : {std::pair{50, 40}, {-3, 40}, {3, 2}, {97, 79}, {104, -5}})
    for (int r = 0; r < 30; ++r) {
      Pixels expected;
      for (int i = 0; i < 2 * r; ++i)
        for (int j = 0; j < 2 * r; ++j)
          if (const int px = x + r - i, py = y + r - j;
              (r - i) * (r - i) + (r - j) * (r - j) <= r * r && px >= 0 && px < 100 && py >= 0 && py < 80)
            expected.emplace(px, py);
      EXPECT_EQ(Disc(x, y, r, 100, 80), expected) << x << "," << y << " radius " << r;
    }
}

TEST(OverlayShapes, TellWhetherADiscCoversThePicture) {
  for (const auto& [x, y] : {std::pair{0, 0}, {7, 4}, {14, 0}, {15, 9}, {-3, 20}})
    for (int64_t radius = 0; radius < 40; ++radius)
      EXPECT_EQ(DiscCovers(DiscShape(x, y, radius), 15, 10), Disc(x, y, radius, 15, 10).size() == 150)
          << x << "," << y << " radius " << radius;
}

TEST(OverlayShapes, DiscsEndAtTheFrame) {
  EXPECT_EQ(Disc(50, 50, 65535, 100, 80).size(), 8000u) << "a disc that covers everything";
  EXPECT_TRUE(Disc(std::numeric_limits<int32_t>::min(), 10, 65535, 100, 100).empty());
  EXPECT_TRUE(Disc(std::numeric_limits<int32_t>::max(), 10, 65535, 100, 100).empty());
}

}  // namespace
