// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <climits>
#include <vector>

#include "backends/ddraw/ddraw_layout.h"
#include "display/mosaic_layout.h"

using namespace libnivral;

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

constexpr int32_t kWidth = 20;
constexpr int32_t kHeight = 14;

/// The rule, pixel by pixel: inside, the colour of the block's first pixel that is in the picture. All pixels
/// differ, and there is padding behind every row.
void ExpectMosaic(const PixelRect& area, int32_t block, int32_t bytes) {
  const int32_t pitch = kWidth * bytes + 5;
  std::vector<uint8_t> picture(static_cast<size_t>(pitch * kHeight), 0xEE);
  std::vector<uint8_t> expected = picture;
  const MosaicGrid grid = LayoutMosaic(area, block, kWidth, kHeight);
  const PixelRect& t = grid.target;
  for (int32_t y = 0; y < kHeight; ++y) {
    for (int32_t x = 0; x < kWidth; ++x) {
      const bool inside = x >= t.left && x < t.right && y >= t.top && y < t.bottom;
      const int32_t fromX = inside ? std::max(t.left + (x - t.left) / block * block, 0) : x;
      const int32_t fromY = inside ? std::max(t.top + (y - t.top) / block * block, 0) : y;
      for (int32_t b = 0; b < bytes; ++b) {
        const auto at = static_cast<size_t>(y * pitch + x * bytes + b);
        picture[at] = static_cast<uint8_t>(x * 7 + y * 31 + b * 101);
        expected[at] = static_cast<uint8_t>(fromX * 7 + fromY * 31 + b * 101);
      }
    }
  }
  FillBlocks(picture.data(), pitch, bytes, kWidth, kHeight, grid);
  EXPECT_EQ(picture, expected) << area.left << "," << area.top << " block " << block << " bytes " << bytes;
}

TEST(FillBlocks, GivesEveryBlockItsFirstPixelAndCutsThemAtThePicture) {
  for (const int32_t bytes : {2, 3, 4}) {
    ExpectMosaic({2, 3, 14, 12}, 3, bytes);
    ExpectMosaic({0, 0, 20, 14}, 6, bytes);
    ExpectMosaic({5, 5, 6, 6}, 12, bytes);
    ExpectMosaic({-4, -5, 11, 7}, 6, bytes);
    ExpectMosaic({15, 10, 40, 40}, 9, bytes);
    ExpectMosaic({-100, -100, 100, 100}, 3000, bytes);
    ExpectMosaic({5, 5, 5, 9}, 3, bytes);
  }
}

}  // namespace
