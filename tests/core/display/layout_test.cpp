// SPDX-License-Identifier: MIT
// Where mosaics, texts and DirectDraw's pictures go, and which font texts have.
#include <gmock/gmock.h>

#include <climits>
#include <cstring>
#include <random>
#include <set>
#include <tuple>
#include <vector>

#include "backends/ddraw/ddraw_layout.h"
#include "display/fonts.h"
#include "display/mosaic_layout.h"
#include "display/overlay_types.h"
#include "display/text_layout.h"

using namespace libnivral;

namespace {

TEST(Mosaic, BlockSizes) {
  constexpr std::pair<int32_t, int32_t> kCases[] = {
      {1, 3},   {2, 6},  {3, 9},    {4, 12}, {5, 3},  {10, 6},  {20, 9},        {30, 12},
      {50, 15}, {6, 18}, {49, 147}, {0, 0},  {-1, 0}, {-50, 0}, {INT32_MIN, 0}, {INT32_MAX, 16384}};
  for (const auto& [level, block] : kCases)
    EXPECT_EQ(MosaicBlockSize(static_cast<uint32_t>(level)), block) << level;
}

/// For any area: every display pixel of the area is covered, and takes the colour of its block's corner or of
/// the nearest pixel on the display.
TEST(Mosaic, CoversTheVisiblePartOfAnyArea) {
  std::mt19937 random(21);
  const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<uint32_t>(limit)); };
  for (int n = 0; n < 3000; ++n) {
    const int left = below(120) - 60, top = below(120) - 60;
    const int right = left + below(90) - 4, bottom = top + below(90) - 4;
    const int block = below(20);
    const MosaicGrid grid = LayoutMosaic({left, top, right, bottom}, block, 50, 40);
    const bool visible =
        block > 0 && right > std::max(left, 0) && bottom > std::max(top, 0) && left < 50 && top < 40;
    ASSERT_EQ(grid.columns > 0, visible);
    if (!visible) continue;
    for (int x = std::max(left, 0); x < std::min(right, 50); ++x) {
      const int column = (x - grid.target.left) / block;
      ASSERT_TRUE(x >= grid.target.left && column < grid.columns);
      ASSERT_EQ(grid.source.left + grid.SourceX(column), std::max(left + (x - left) / block * block, 0));
    }
    for (int y = std::max(top, 0); y < std::min(bottom, 40); ++y) {
      const int row = (y - grid.target.top) / block;
      ASSERT_TRUE(y >= grid.target.top && row < grid.rows);
      ASSERT_EQ(grid.source.top + grid.SourceY(row), std::max(top + (y - top) / block * block, 0));
    }
    ASSERT_LT(grid.SourceX(grid.columns - 1), grid.source.Width());
    ASSERT_LT(grid.SourceY(grid.rows - 1), grid.source.Height());
  }
  const MosaicGrid huge = LayoutMosaic({INT32_MIN, INT32_MIN, INT32_MAX, INT32_MAX}, 3, 1920, 1080);
  EXPECT_EQ(huge.source, (PixelRect{0, 0, 1920, 1080}));
  EXPECT_EQ(LayoutMosaic({0, 0, 40, 40}, 9, 0, 0).columns, 0);
}

TextItem Item(const char* text, int32_t x, int32_t y, uint32_t anchor) {
  TextItem item{};
  std::strcpy(item.text, text);
  item.x = static_cast<uint32_t>(x);
  item.y = static_cast<uint32_t>(y);
  item.anchor = anchor;
  return item;
}

TEST(Osd, Places) {
  const auto at = [](int32_t x, int32_t y, uint32_t anchor) {
    return PlaceOsdText(Item("t", x, y, anchor), {DisplayMap::Unscaled(1920, 1080)});
  };
  EXPECT_EQ(at(0, 20, 0)->y, 20);
  EXPECT_EQ(at(0, 20, 1)->y, 1060);
  EXPECT_EQ(at(0, 20, 2)->y, 20);
  EXPECT_EQ(at(0, 2000, 1)->y, -920);
  EXPECT_EQ(at(100, 0, 0)->wrapWidth, 1820);
  EXPECT_FALSE(at(-1, 0, 0) || at(0, -1, 0) || at(0, -1, 1));
  EXPECT_FALSE(at(1920, 0, 0) || at(0, 1080, 0) || at(0, 0, 1));
  EXPECT_FALSE(PlaceOsdText(Item("", 0, 0, 0), {DisplayMap::Unscaled(1920, 1080)}));

  const auto cut = PlaceOsdText(Item("t", -5, -7, 0), {DisplayMap::Unscaled(1920, 1080), false});
  ASSERT_TRUE(cut);
  EXPECT_TRUE(cut->x == -5 && cut->y == -7 && cut->wrapWidth == 1925);
  const auto mapped = PlaceOsdText(Item("t", 21, 20, 1), {{160, 120, 400, 240}});
  ASSERT_TRUE(mapped);
  EXPECT_TRUE(mapped->x == 52 && mapped->y == 200 && mapped->wrapWidth == 348);
  EXPECT_EQ(PlaceOsdText(Item("t", 0, INT32_MAX, 1), {{1, 1, 8192, 8192}})->y, INT32_MIN);
}

std::set<std::string> g_fonts;
bool Exists(const char* path) {
  return g_fonts.count(path) != 0;
}

std::string Chosen(const char* folder) {
  FontFile file;
  ChooseFontFile(file, folder, &Exists);
  return file;
}

TEST(FontChoice, TakesTheFirstThatExistsElseTheLast) {
  g_fonts = {};
  EXPECT_EQ(Chosen("F"), "F\\simkai.ttf");
  EXPECT_EQ(Chosen(""), "\\simkai.ttf");
  g_fonts = {"F\\simhei.ttf", "F\\simkai.ttf"};
  EXPECT_EQ(Chosen("F"), "F\\simhei.ttf");
  g_fonts.insert("F\\simfang.ttf");
  EXPECT_EQ(Chosen("F"), "F\\simfang.ttf");
  g_fonts.insert("F\\Microsoft YaHei UI.ttf");
  EXPECT_EQ(Chosen("F"), "F\\Microsoft YaHei UI.ttf");
}

TEST(FontChoice, FallsBackToOthersInTheSameFolder) {
  FontFile file;
  for (const auto& [path, index, other] : {std::tuple{R"(C:\F\simkai.ttf)", 0u, R"(C:\F\msyh.ttc)"},
                                           {R"(C:\simkai.ttf)", 5u, R"(C:\arial.ttf)"},
                                           {"simkai.ttf", 6u, "micross.ttf"}}) {
    EXPECT_TRUE(FallbackFontFile(file, path, index));
    EXPECT_STREQ(file, other);
  }
  EXPECT_FALSE(FallbackFontFile(file, "simkai.ttf", 7));
}

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
    EXPECT_TRUE(copy.source == c.source && copy.target == c.target) << c.x << "," << c.y;
  }
}

constexpr int32_t kWidth = 20, kHeight = 14;

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
