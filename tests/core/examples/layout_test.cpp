// SPDX-License-Identifier: MIT
#include "player/windows/layout.h"

#include <gmock/gmock.h>

#include <vector>

namespace {

TEST(PlayerLayout, CellsFillTheWindowWithoutOverlap) {
  const PixelSize window{1277, 719};
  for (const int count : {1, 2, 3, 4, 5, 9, 16}) {
    std::vector<int> owners(static_cast<size_t>(window.width * window.height));
    int covered = 0;
    for (int i = 0; i < count; ++i) {
      const PixelArea cell = CellOf(i, count, window);
      ASSERT_TRUE(cell.left >= 0 && cell.top >= 0 && cell.left + cell.width <= window.width &&
                  cell.top + cell.height <= window.height);
      for (int y = cell.top; y < cell.top + cell.height; ++y)
        for (int x = cell.left; x < cell.left + cell.width; ++x)
          covered += ++owners[static_cast<size_t>(y * window.width + x)] == 1 ? 1 : -1'000'000;
    }
    // Of three and five, one place each stays empty.
    const double full = count == 3 ? 0.75 : count == 5 ? 5 / 6.0 : 1;
    EXPECT_NEAR(covered / static_cast<double>(window.width * window.height), full, 0.06) << count;
  }
  EXPECT_EQ(CellOf(0, 1, window).width, window.width);
  EXPECT_EQ(CellOf(0, 1, window).height, window.height);
}

TEST(PlayerLayout, PicturesKeepTheirProportionsInTheMiddle) {
  const PixelArea wide = FitInto({10, 20, 640, 480}, {1280, 720});
  EXPECT_EQ(wide.left, 10);
  EXPECT_EQ(wide.top, 80);
  EXPECT_EQ(wide.width, 640);
  EXPECT_EQ(wide.height, 360);
  const PixelArea high = FitInto({0, 0, 640, 360}, {300, 600});
  EXPECT_EQ(high.left, 230);
  EXPECT_EQ(high.width, 180);
  EXPECT_EQ(high.height, 360);
  EXPECT_EQ(FitInto({0, 0, 0, 0}, {16384, 2}).height, 1) << "a minimised window";
}

}  // namespace
