// SPDX-License-Identifier: MIT
// The picture: every pixel in its place, in its colour, in whatever window.
#include <cstdlib>
#include <random>
#include <tuple>

#include "backends.h"

namespace {

constexpr int kWidth = 160, kHeight = 120;

/// Luma that tells each pixel from its neighbours, and another colour in each quarter.
TestFrame PlacesFrame(int padding) {
  std::mt19937 random(7);
  TestFrame f(kWidth, kHeight, kWidth + padding, kWidth / 2 + padding);
  f.Fill(255, 255, 255);
  for (int y = 0; y < kHeight; ++y)
    for (int x = 0; x < kWidth; ++x) {
      f.y[static_cast<size_t>(y * f.strideY + x)] = static_cast<uint8_t>(60 + random() % 120);
      const auto chroma = static_cast<size_t>(y / 2 * f.strideUV + x / 2);
      const bool corner = (x < 8 || x >= kWidth - 8) && (y < 8 || y >= kHeight - 8);
      f.u[chroma] = corner ? 128 : x < kWidth / 2 ? 100 : 140;
      f.v[chroma] = corner ? 128 : y < kHeight / 2 ? 105 : 150;
    }
  return f;
}

/// What is wrong with a frame shown one to one, mirrored, turned over and lighter as told.
std::string Complaint(const ScreenShot& shot, const TestFrame& f, uint32_t mirror, bool bottomUp, int lighter,
                      bool limitedRange) {
  for (int y = 0; y < kHeight; ++y)
    for (int x = 0; x < kWidth; ++x) {
      // Chroma is smoothed where it changes, and at the planes' ends.
      const int dx = std::min(x, kWidth - 1 - x), dy = std::min(y, kHeight - 1 - y);
      if (dx < 2 || dy < 2 || (dx < 11 && dy < 11) || dx > kWidth / 2 - 3 || dy > kHeight / 2 - 3) continue;
      const int fromX = mirror ? kWidth - 1 - x : x, fromY = (mirror == 2) != bottomUp ? kHeight - 1 - y : y;
      const auto chroma = static_cast<size_t>(fromY / 2 * f.strideUV + fromX / 2);
      const Rgb wanted = ToRgb(f.y[static_cast<size_t>(fromY * f.strideY + fromX)] + lighter, f.u[chroma],
                               f.v[chroma], limitedRange);
      if (!Near(shot.At(x, y), wanted, 3))
        return testing::PrintToString(shot.At(x, y)) + " instead of " + testing::PrintToString(wanted) +
               " at " + std::to_string(x) + "," + std::to_string(y);
    }
  return "";
}

TEST_P(Conformance, EveryPixelIsInItsPlace) {
  Pane pane(b.type, kWidth, kHeight);
  pane.Start(kWidth, kHeight);
  TestFrame f = PlacesFrame(0);
  for (const auto& [mirror, bottomUp, lighter] : {std::tuple{0u, false, 0},
                                                  {1u, false, 0},
                                                  {2u, false, 0},
                                                  {0u, false, 30},
                                                  {2u, false, 30},
                                                  {0u, true, 0},
                                                  {1u, true, 0},
                                                  {2u, true, 30}}) {
    NIVRAL_DWSetMirrorMode(pane.handle, mirror);
    pane.bottomUp = bottomUp;
    NIVRAL_SetColorParams(pane.handle, lighter, 0, 0, 0, 0);
    const std::vector<uint8_t> before = f.u;
    EXPECT_EQ(Complaint(pane.Show(f, lighter), f, mirror, bottomUp, lighter, pane.limitedRange), "")
        << mirror << " " << bottomUp << " " << lighter;
    EXPECT_EQ(f.u, before) << "the client's planes stay as they are";
  }
  NIVRAL_DWSetMirrorMode(pane.handle, 0);
  NIVRAL_SetColorParams(pane.handle, 0, 0, 0, 0, 0);
  pane.bottomUp = false;
  TestFrame padded = PlacesFrame(16);
  if (b.newLayoutDropsFrame) {
    EXPECT_EQ(pane.Draw(padded), b.badFrame);
  }
  EXPECT_EQ(Complaint(pane.Show(padded), padded, 0, false, 0, pane.limitedRange), "");
}

TEST_P(Conformance, PlanesThatHoldNoFrameAreRefused) {
  Pane pane(b.type, kWidth, kHeight);
  pane.Start(kWidth, kHeight);
  TestFrame f = FlatFrame(kWidth, kHeight, 60, 128, 128);
  const FrameView good = f.View();
  for (const uint32_t mirror : {0u, 1u}) {
    NIVRAL_DWSetMirrorMode(pane.handle, mirror);
    for (const FrameView& bad : {FrameView{nullptr, kWidth, good.u, 80, good.v, 80},
                                 {good.y, kWidth, good.u, 80, nullptr, 80},
                                 {good.y, kWidth - 1, good.u, 80, good.v, 80},
                                 {good.y, kWidth, good.u, 79, good.v, 79},
                                 {good.y, 0, good.u, 80, good.v, 80}})
      EXPECT_EQ(pane.DrawView(bad), b.badFrame) << "stride " << bad.strideY;
  }
  pane.Settle(kWidth, kHeight);
  pane.Show(f);
}

/// Flat but for its corners, which are left to the marks.
TestFrame ColourFrame(int width, int height, uint8_t y, uint8_t u, uint8_t v) {
  TestFrame f = FlatFrame(width, height, y, 128, 128);
  for (int row = 0; row < height / 2; ++row)
    for (int x = 0; x < width / 2; ++x)
      if ((x > 3 && x < width / 2 - 4) || (row > 3 && row < height / 2 - 4)) {
        f.u[static_cast<size_t>(row * f.strideUV + x)] = u;
        f.v[static_cast<size_t>(row * f.strideUV + x)] = v;
      }
  return f;
}

/// A bright patch at another place in every frame of another colour: anything else of the picture is stale or missing.
TEST_P(Conformance, FramesFillWindowsOfAnySizeWhileTheyChange) {
  constexpr int kLarge = 640, kHigh = 480;
  Pane pane(b.type, 320, 240);
  pane.Start(kLarge, kHigh);
  std::mt19937 random(5);
  const struct {
    int width, height;
    uint8_t u, v;
  } steps[] = {{320, 240, 90, 240}, {641, 481, 54, 34},   {200, 400, 240, 110},
               {90, 70, 128, 128},  {1280, 700, 90, 240}, {500, 100, 54, 34}};
  for (const auto& [width, height, u, v] : steps) {
    pane.window.ResizeClient(width, height);
    NIVRAL_DWAdjustedWnd(pane.handle);
    pane.Settle(kLarge, kHigh);
    const int left = 40 + static_cast<int>(random() % 400), top = 40 + static_cast<int>(random() % 250);
    TestFrame f = ColourFrame(kLarge, kHigh, 60, u, v);
    for (int y = top; y < top + 120; ++y)
      std::fill_n(f.y.begin() + y * kLarge + left, 160, uint8_t{200});
    const ScreenShot shot = pane.Show(f);
    const double sx = double{kLarge} / shot.Width(), sy = double{kHigh} / shot.Height();
    int wrong = 0;
    for (int y = 0; y < shot.Height(); ++y)
      for (int x = 0; x < shot.Width(); ++x) {
        const double px = (x + 0.5) * sx, py = (y + 0.5) * sy, border = 3 * std::max({1.0, sx, sy});
        const double outside = std::max({left - px, px - left - 160, top - py, py - top - 120});
        const double end = std::min({px, py, kLarge - px, kHigh - py});
        const bool mark =
            std::min(px, kLarge - px) < kMark + border && std::min(py, kHigh - py) < kMark + border;
        if (mark || end < border || std::abs(outside) < border) continue;
        wrong += !Near(shot.At(x, y), ToRgb(outside < 0 ? 200 : 60, u, v, pane.limitedRange), 3);
      }
    EXPECT_EQ(wrong, 0) << width << "x" << height;
  }
}

TEST_P(Conformance, OddAndTinyVideosAreShown) {
  Pane pane(b.type, 160, 120);
  for (const auto& [width, height] : {std::pair{64, 48}, {63, 47}, {2, 2}, {1, 1}, {64, 1}}) {
    SCOPED_TRACE(std::to_string(width) + "x" + std::to_string(height));
    NIVRAL_DWFreeDraw(pane.handle);
    if (!b.strayTinyChroma || height > 2) {
      pane.Start(width, height);
    } else {
      TestFrame tiny = FlatFrame(width, height, 16, 128, 128);
      pane.Init(width, height);
      EXPECT_TRUE(WaitUntil([&] { return pane.Draw(tiny) == 0; }));
    }
  }
}

TEST_P(Conformance, APaneComesBackAfterHidingAndMinimising) {
  Pane pane(b.type, 160, 120);
  pane.Start(64, 48);
  TestFrame red = ColourFrame(64, 48, 81, 90, 240);
  for (const int state : {SW_HIDE, SW_MINIMIZE}) {
    ShowWindow(pane.Window(), state);
    Pump(30);
    for (int i = 0; i < 5; ++i) {
      const uint32_t result = pane.Draw(red);
      EXPECT_TRUE(state == SW_MINIMIZE || result == (b.refusesHidden ? 1u : 0u)) << result;
    }
    ShowWindow(pane.Window(), SW_SHOWNORMAL);
    pane.Start(64, 48);
    const auto isRed = [colour = ToRgb(81, 90, 240, pane.limitedRange)](const Rgb& c) {
      return Near(c, colour, 3);
    };
    EXPECT_EQ(Find(pane.Show(red), isRed, {26, 4, 134, 116}).count, 108 * 112) << "between the marks";
  }
}

/// Rows of noise: any repeated or averaged part of it shows.
TEST_P(Conformance, TheMosaicHidesItsPartOfThePictureOnly) {
  Pane pane(b.type, kWidth, kHeight);
  pane.Start(kWidth, kHeight);
  TestFrame f = PlacesFrame(0);
  NIVRAL_DWSetMosaicLevel(pane.handle, 4);
  NIVRAL_DWSetMosaicAreaScale(pane.handle, 0.25f, 0.25f, 0.75f, 0.75f);
  for (const int scale : {1, 2}) {
    // Neither the picture nor its mosaic waits for the client to call NIVRAL_DWAdjustedWnd.
    pane.window.ResizeClient(kWidth * scale, kHeight * scale);
    pane.Settle(kWidth, kHeight);
    const ScreenShot plain = pane.Show(f);
    NIVRAL_DWSetMosaicFlag(pane.handle, 1);
    const ScreenShot hidden = pane.Show(f);
    NIVRAL_DWSetMosaicFlag(pane.handle, 0);
    int changed = 0, outside = 0;
    for (int y = 0; y < plain.Height(); ++y)
      for (int x = 0; x < plain.Width(); ++x) {
        const bool differs = !Near(plain.At(x, y), hidden.At(x, y), 12);
        const int px = x / scale, py = y / scale;
        // Blocks are drawn whole and may reach past the area.
        const bool inside = px >= 39 && px < 121 + 12 && py >= 29 && py < 91 + 12;
        const bool corner = (px < 8 || px > kWidth - 9) && (py < 8 || py > kHeight - 9);
        (inside ? changed : outside) += differs && !corner;
      }
    EXPECT_GT(changed, 80 * 60 * scale * scale / 2);
    EXPECT_EQ(outside, 0);
  }
}

}  // namespace
