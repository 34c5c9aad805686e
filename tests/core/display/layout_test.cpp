// SPDX-License-Identifier: MIT
// Where mosaics, texts and DirectDraw's pictures go, and which font texts have.
#include <gmock/gmock.h>

#include <array>
#include <bit>
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
  constexpr BlockAxis kAxis{-7, 12, 5};
  EXPECT_EQ(kAxis.ToBlocks(-7 + 12 + 0.5f), 1.5f) << "the middle of a block's first pixel is the block's";
  EXPECT_EQ(kAxis.ToPixels(kAxis.ToBlocks(31)), 31);
}

constexpr int kWidth = 50, kHeight = 40;

/// All pixels of a picture with padded rows; none is like another in its row or column.
std::vector<uint8_t> Picture(int bytes, const auto& from) {
  const int pitch = kWidth * bytes + 5;
  std::vector<uint8_t> picture(static_cast<size_t>(pitch * kHeight), 0xEE);
  for (int at = 0; at < kWidth * kHeight * bytes; ++at) {
    const int x = at / bytes % kWidth, y = at / bytes / kWidth, byte = at % bytes;
    const auto [fromX, fromY] = from(x, y);
    picture[static_cast<size_t>(y * pitch + x * bytes + byte)] =
        static_cast<uint8_t>(fromX * 5 + fromY * 31 + byte * 101);
  }
  return picture;
}

/// For any area: the blocks that it begins are filled, as far as the picture goes, and nothing else.
TEST(Mosaic, GivesEveryBlockOfAnyAreaItsFirstPixel) {
  std::mt19937 random(21);
  const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<uint32_t>(limit)); };
  for (int n = 0; n < 1500; ++n) {
    const int left = below(120) - 60, top = below(120) - 60, block = below(20), bytes = 2 + n % 3;
    const int right = left + below(90) - 4, bottom = top + below(90) - 4;
    const MosaicGrid grid = LayoutMosaic({left, top, right, bottom}, block, kWidth, kHeight);
    const bool visible =
        block > 0 && right > std::max(left, 0) && bottom > std::max(top, 0) && left < kWidth && top < kHeight;
    ASSERT_EQ(grid.columns > 0, visible);
    const auto covers = [&](int at, int from, int to) {
      return at >= from && (at - from) / block * block + from < to;
    };
    const auto first = [&](int at, int from) { return std::max(from + (at - from) / block * block, 0); };
    const auto picture = Picture(bytes, [](int x, int y) { return std::pair(x, y); });
    const auto expected = Picture(bytes, [&](int x, int y) {
      if (!visible || !covers(x, left, right) || !covers(y, top, bottom)) return std::pair(x, y);
      return std::pair(first(x, left), first(y, top));
    });
    auto filled = picture;
    FillBlocks(filled.data(), kWidth * bytes + 5, bytes, kWidth, kHeight, grid);
    ASSERT_EQ(filled, expected) << left << "," << top << " to " << right << "," << bottom << ", block "
                                << block;
    for (int i = 0; i < grid.columns; ++i)
      ASSERT_EQ(grid.source.left + grid.SourceX(i), std::max(grid.target.left + i * block, 0));
    for (int i = 0; i < grid.rows; ++i)
      ASSERT_EQ(grid.source.top + grid.SourceY(i), std::max(grid.target.top + i * block, 0));
    if (!visible) continue;
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

TEST(Osd, PlacesAndColours) {
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
  EXPECT_EQ(FromColourRef(0x00A1B2C3), (OverlayColour{0xC3, 0xB2, 0xA1}));
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
  g_fonts = {"F\\simkai.ttf"};
  for (const char* font : {"F\\simhei.ttf", "F\\simfang.ttf", "F\\Microsoft YaHei UI.ttf"}) {
    g_fonts.insert(font);
    EXPECT_EQ(Chosen("F"), font);
  }
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

/// What DirectDraw's trial of a blit has to tell apart.
TEST(DisplayPixels, AreRedOrNotInAnyMode) {
  constexpr std::array<int, 3> kColours[] = {{238, 14, 14},  {200, 48, 48}, {14, 14, 238}, {238, 120, 14},
                                             {238, 14, 120}, {120, 14, 14}, {0, 0, 0},     {200, 200, 200}};
  for (const auto& [red, green, blue] : kColours) {
    const std::pair<PixelFormat, int> pixels[] = {
        {PixelFormat::Bgrx32, red << 16 | green << 8 | blue},
        {PixelFormat::Bgr24, red << 16 | green << 8 | blue},
        {PixelFormat::Rgb565, red >> 3 << 11 | green >> 2 << 5 | blue >> 3},
        {PixelFormat::Rgb555, red >> 3 << 10 | green >> 3 << 5 | blue >> 3}};
    for (const auto& [format, pixel] : pixels) {
      const auto bytes = std::bit_cast<std::array<uint8_t, 4>>(pixel);
      EXPECT_EQ(IsRed(bytes.data(), format), red >= 200 && green < 60 && blue < 60) << pixel;
    }
  }
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

}  // namespace
