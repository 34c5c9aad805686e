// SPDX-License-Identifier: MIT
#include "player/windows/layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

TEST(PlayerLayout, CellsFillTheWindowWithoutOverlap) {
  const PixelSize window{1277, 719};
  for (const auto& [count, places] : {std::pair{1, 1}, {2, 2}, {3, 4}, {4, 4}, {5, 6}, {9, 9}, {16, 16}}) {
    std::vector<int> covered(1277 * 719);
    for (int i = 0; i < count; ++i) {
      const PixelArea cell = CellOf(i, count, window);
      ASSERT_TRUE(cell.left >= 0 && cell.left + cell.width <= window.width) << count;
      for (int at = 0; at < cell.width * cell.height; ++at)
        ++covered.at(
            static_cast<size_t>((cell.top + at / cell.width) * window.width + cell.left + at % cell.width));
    }
    EXPECT_EQ(*std::max_element(covered.begin(), covered.end()), 1) << count;
    const auto pixels = static_cast<double>(std::count(covered.begin(), covered.end(), 1));
    EXPECT_NEAR(pixels / static_cast<double>(covered.size()), count / double(places), 0.06) << count;
  }
  EXPECT_EQ(CellOf(0, 1, window).width, window.width);
}

TEST(PlayerLayout, PicturesKeepTheirProportionsInTheMiddle) {
  const PixelArea wide = FitInto({10, 20, 640, 480}, {1280, 720});
  EXPECT_TRUE(wide.left == 10 && wide.top == 80 && wide.width == 640 && wide.height == 360);
  const PixelArea high = FitInto({0, 0, 640, 360}, {300, 600});
  EXPECT_TRUE(high.left == 230 && high.width == 180 && high.height == 360);
  EXPECT_EQ(FitInto({0, 0, 0, 0}, {16384, 2}).height, 1) << "a minimised window";
}
