// SPDX-License-Identifier: MIT
#include "backends/ddraw/pixelate.h"

#include <gmock/gmock.h>

#include <vector>

namespace {

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
