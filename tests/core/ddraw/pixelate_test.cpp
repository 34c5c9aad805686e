// SPDX-License-Identifier: MIT
#include "backends/ddraw/pixelate.h"

#include <gmock/gmock.h>

#include <vector>

namespace {

/// A picture whose pixels all differ, with padding behind every row.
struct Picture {
  explicit Picture(int32_t bytes) : bytesPerPixel(bytes), pitch(kWidth * bytes + 5) {
    pixels.resize(static_cast<size_t>(pitch * kHeight), 0xEE);
    for (int32_t y = 0; y < kHeight; ++y) {
      for (int32_t x = 0; x < kWidth; ++x) {
        for (int32_t b = 0; b < bytes; ++b)
          pixels[Offset(x, y) + static_cast<size_t>(b)] = Value(x, y, b);
      }
    }
  }
  static uint8_t Value(int32_t x, int32_t y, int32_t b) {
    return static_cast<uint8_t>(x * 7 + y * 31 + b * 101);
  }
  size_t Offset(int32_t x, int32_t y) const { return static_cast<size_t>(y * pitch + x * bytesPerPixel); }

  static constexpr int32_t kWidth = 20;
  static constexpr int32_t kHeight = 14;
  int32_t bytesPerPixel;
  int32_t pitch;
  std::vector<uint8_t> pixels;
};

/// The rule, pixel by pixel: inside, the colour of the block's first pixel that is in the picture.
void ExpectMosaic(const PixelRect& area, int32_t block, int32_t bytes) {
  Picture picture(bytes);
  const Picture original(bytes);
  const MosaicGrid grid = LayoutMosaic(area, block, Picture::kWidth, Picture::kHeight);
  FillBlocks(picture.pixels.data(), picture.pitch, bytes, Picture::kWidth, Picture::kHeight, grid);
  std::vector<uint8_t> expected = original.pixels;
  for (int32_t y = 0; y < Picture::kHeight; ++y) {
    for (int32_t x = 0; x < Picture::kWidth; ++x) {
      const PixelRect& t = grid.target;
      if (x < t.left || x >= t.right || y < t.top || y >= t.bottom) continue;
      const int32_t fromX = std::max(t.left + (x - t.left) / block * block, 0);
      const int32_t fromY = std::max(t.top + (y - t.top) / block * block, 0);
      for (int32_t b = 0; b < bytes; ++b)
        expected[original.Offset(x, y) + static_cast<size_t>(b)] = Picture::Value(fromX, fromY, b);
    }
  }
  EXPECT_EQ(picture.pixels, expected)
      << area.left << "," << area.top << " block " << block << " bytes " << bytes;
}

TEST(FillBlocks, GivesEveryBlockItsFirstPixel) {
  for (const int32_t bytes : {2, 3, 4}) {
    ExpectMosaic({2, 3, 14, 12}, 3, bytes);
    ExpectMosaic({0, 0, 20, 14}, 6, bytes);
    ExpectMosaic({5, 5, 6, 6}, 12, bytes);
  }
}

TEST(FillBlocks, CutsBlocksAtThePicture) {
  for (const int32_t bytes : {2, 3, 4}) {
    ExpectMosaic({-4, -5, 11, 7}, 6, bytes);
    ExpectMosaic({15, 10, 40, 40}, 9, bytes);
    ExpectMosaic({-100, -100, 100, 100}, 3000, bytes);
  }
  Picture untouched(4);
  FillBlocks(untouched.pixels.data(), untouched.pitch, 4, Picture::kWidth, Picture::kHeight, {});
  EXPECT_EQ(untouched.pixels, Picture(4).pixels);
}

}  // namespace
