// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <limits>
#include <tuple>

#include "backends/d3d9/d3d_mosaic.h"
#include "backends/d3d9/d3d_zoom.h"
#include "surface_reference.h"

namespace {

constexpr int32_t kLowest = std::numeric_limits<int32_t>::min();
constexpr int32_t kHighest = std::numeric_limits<int32_t>::max();

TEST(Zoom, CentresTheWindowOnTheClickedPointOfAMirroredPictureUpToEight) {
  // Extents are truncated; 7 is no mirror mode; a click at 8 does not pan, and beyond 8 the window stays.
  const ZoomState zoomed{100, 200, 8};
  const std::tuple<ZoomState, uint32_t, MillePoint, int32_t, ZoomState> cases[] = {
      {{}, 0, {500, 500}, 2, {250, 250, 2}},
      {{}, 0, {0, 1000}, 4, {0, 750, 4}},
      {{250, 250, 2}, 0, {500, 100}, 4, {375, 175, 4}},
      {{}, 0, {500, 500}, 3, {334, 334, 3}},
      {{}, 1, {100, 600}, 4, {750, 475, 4}},
      {{}, 2, {300, 600}, 4, {575, 275, 4}},
      {{200, 100, 2}, 1, {400, 400}, 4, {375, 175, 4}},
      {{200, 100, 2}, 7, {400, 400}, 4, {275, 275, 4}},
      {zoomed, 0, {900, 900}, 8, zoomed},
      {{100, 200, 2}, 0, {0, 0}, 12, zoomed},
      {{}, 0, {500, 500}, 8, {438, 438, 8}},
      {zoomed, 0, {900, 900}, 1, {}},
      {zoomed, 0, {900, 900}, 0, {}},
      {zoomed, 0, {900, 900}, kLowest, {}}};
  for (const auto& [now, mirror, point, factor, expected] : cases)
    EXPECT_EQ(ZoomTo(now, mirror, point.x, point.y, factor), expected) << factor << " mirrored " << mirror;
}

TEST(Zoom, StaysInTheFrameForAnyPointAndGivesTheWindowInPixels) {
  for (uint32_t mirror = 0; mirror < 4; ++mirror)
    for (int32_t point : {kLowest, -1, 0, 1001, kHighest})
      for (int32_t factor = 2; factor <= 8; ++factor) {
        const ZoomState zoom = ZoomTo({}, mirror, point, point, factor);
        EXPECT_TRUE(zoom.x >= 0 && zoom.y <= 1000 - 1000 / factor && zoom.Enlarges());
      }
  EXPECT_FALSE((ZoomState{0, 0, 1}.Enlarges() || ZoomState{0, 0, kMaxZoom + 1}.Enlarges()));
  EXPECT_EQ(ScaleEdge(640, 0.26f), 166);
  EXPECT_EQ(ZoomWindow({}, 352, 288), (PixelRect{0, 0, 352, 288}));
  EXPECT_EQ(ZoomWindow({334, 667, 3}, 1920, 1080), (PixelRect{641, 720, 1281, 1080}));
}

TEST(MosaicMap, FindsTheFrameUnderTheDisplayedPicture) {
  const MilleRect drawn{100, 200, 300, 600};
  const ZoomState zoom{400, 300, 2};
  const MilleRect expected[] = {drawn, {700, 200, 900, 600}, {700, 400, 900, 800}};
  const MilleRect zoomed[] = {{450, 400, 550, 600}, {750, 400, 850, 600}, {750, 500, 850, 700}};
  const MillePoint points[] = {{450, 600}, {850, 600}, {850, 500}};
  for (uint32_t mirror = 0; mirror < 3; ++mirror) {
    EXPECT_EQ(FrameRectUnder(drawn, {}, mirror), expected[mirror]);
    EXPECT_EQ(FrameRectUnder(drawn, zoom, mirror), zoomed[mirror]);
    EXPECT_EQ(FramePointUnder({100, 600}, zoom, mirror), points[mirror]);
  }
  EXPECT_EQ(FrameRectUnder({-50, -1, 1200, 5000}, {}, 0), (MilleRect{0, 0, 1000, 1000}));
  EXPECT_EQ(FrameRectUnder({kLowest, kLowest, kHighest, kHighest}, {}, 2), (MilleRect{0, 0, 1000, 1000}));
  EXPECT_EQ(FramePointUnder({-9000, kHighest}, {}, 0), (MillePoint{0, 1000}));
  EXPECT_EQ(FrameRectUnder(drawn, {}, 3), std::nullopt);
  EXPECT_EQ(FrameRectUnder(drawn, {500, 250, 8}, 0), (MilleRect{512, 275, 537, 325}));
  EXPECT_EQ(FrameRectUnder(drawn, {0, 0, 9}, 0), std::nullopt);
  EXPECT_EQ(FramePointUnder({0, 0}, {}, 3), std::nullopt);
}

TEST(MosaicMap, PicksTheFirstMosaicOverAPoint) {
  const MilleRect mosaics[] = {{100, 100, 200, 200}, {150, 150, 400, 400}};
  for (const auto& [at, index] : {std::pair{100, 0}, {199, 0}, {200, 1}, {400, -1}})
    EXPECT_EQ(PickMosaic(mosaics, {at, at}), index) << at;
}

TEST(MosaicMap, PutsMosaicsWhereThePictureShowsThem) {
  const std::tuple<ZoomState, uint32_t, PixelRect> cases[] = {
      {{}, 0, {100, 100, 300, 300}},         {{}, 1, {700, 100, 900, 300}},
      {{}, 2, {700, 200, 900, 400}},         {{}, 9, {700, 100, 900, 300}},
      {{50, 300, 2}, 0, {100, 0, 500, 300}}, {{0, 0, 4}, 0, {400, 400, 1000, 500}},
      {{0, 300, 2}, 1, {400, 0, 800, 300}},  {{0, 0, 2}, 2, {400, 0, 800, 300}}};
  const MilleRect mosaic{100, 200, 300, 600};
  for (const auto& [zoom, mirror, expected] : cases)
    EXPECT_EQ(MosaicOnSurface(mosaic, zoom, mirror, 1000, 500), expected) << zoom.factor << ", " << mirror;
  for (const uint32_t mirror : {0u, 1u, 2u})
    for (const MilleRect& all : {MilleRect{0, 0, 1000, 1000}, {kLowest, kLowest, kHighest, kHighest}})
      EXPECT_EQ(MosaicOnSurface(all, {}, mirror, 353, 99), (PixelRect{0, 0, 353, 99}));
  EXPECT_TRUE(MosaicOnSurface(mosaic, {301, 0, 2}, 0, 1000, 500).Empty());
  EXPECT_TRUE(MosaicOnSurface(mosaic, {0, 601, 3}, 0, 1000, 500).Empty());
}

void ExpectPixelated(TestFrame& frame, const PixelRect& area, const ZoomState& zoom, uint32_t mirror) {
  TestSurface surface(frame.width, frame.height, frame.width + 4);
  TestSurface expected = surface;
  expected.view.bits = expected.bytes.data();
  PixelateLuma(surface.view, frame.View(), area, zoom, mirror);
  FillPlane(expected.view.Luma(), [&](int32_t row, int32_t column) {
    const bool inside = column >= area.left && column < area.right && row >= area.top && row < area.bottom;
    return inside ? BlockSample(frame, zoom, mirror, row, column) : kUntouched;
  });
  EXPECT_EQ(surface, expected) << "zoom " << zoom.factor << " mirror " << mirror;
}

TEST(MosaicBlocks, ShowOneSamplePerBlock) {
  std::mt19937 random(6);
  for (const auto& [width, height] : {std::pair{160, 90}, std::pair{353, 65}, std::pair{4500, 20}}) {
    TestFrame frame = RandomFrame(width, height, random, 5);
    for (int32_t factor = 1; factor <= 8; ++factor) {
      for (uint32_t mirror = 0; mirror < 4; ++mirror) {
        const int32_t furthest = factor == 1 ? 0 : 1000 - 1000 / factor;
        const ZoomState zoom{furthest, furthest / 2, factor};
        ExpectPixelated(frame, {0, 0, width, height}, zoom, mirror);
        ExpectPixelated(frame, {33, 7, width - 5, height - 1}, zoom, mirror);
        ExpectPixelated(frame, {50, 5, 50, 10}, zoom, mirror);
      }
    }
  }
}

}  // namespace
