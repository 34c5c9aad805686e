// SPDX-License-Identifier: MIT
// What the DirectDraw backend puts on the screen, on both roads.
#include <gmock/gmock.h>

#include "ddraw_pane.h"

namespace {

class DDrawPicture : public testing::TestWithParam<FrameRoad> {
 protected:
  Rgb Colour(const TestFrame& f) const { return ColourOf(GetParam(), f.y[0], f.u[0], f.v[0]); }

  void ExpectFlat(DDrawPane& pane, TestFrame& frame, const RECT& area) {
    const Rgb colour = Colour(frame);
    pane.DrawUntil(frame, area.left, area.top, colour);
    for (const int x : {static_cast<int>(area.left), static_cast<int>(area.left + area.right) / 2,
                        static_cast<int>(area.right) - 1}) {
      for (const int y : {static_cast<int>(area.top), static_cast<int>(area.bottom) - 1})
        EXPECT_PIXEL(pane.window.Handle(), x, y, {colour});
    }
  }
};

INSTANTIATE_TEST_SUITE_P(Roads, DDrawPicture, testing::Values(FrameRoad::Yv12, FrameRoad::Rgb),
                         [](const auto& road) { return road.param == FrameRoad::Yv12 ? "Yv12" : "Rgb"; });

TEST_P(DDrawPicture, StretchesIntoThePlayRectangleOnly) {
  DDrawPane pane(240, 160, GetParam());
  ASSERT_EQ(pane.displayer->InitDraw(64, 48, 0), 0);
  TestFrame grey = GreyFrame();
  const RECT play{40, 30, 200, 130};
  pane.displayer->SetPlayRect(&play);
  ExpectFlat(pane, grey, play);
  const ScreenShot shot(ClientOnScreen(pane.window.Handle()));
  for (const auto& [x, y] : {std::pair{38, 60}, {202, 60}, {100, 28}, {100, 132}})
    EXPECT_FALSE(Near(shot.At(x, y), Colour(grey), 20)) << x << "," << y;

  const RECT empty{50, 50, 50, 90};
  pane.displayer->SetPlayRect(&empty);
  ExpectFlat(pane, grey, {0, 0, 240, 160});
}

TEST_P(DDrawPicture, ScalesAGradientWithStridesAndMirror) {
  DDrawPane pane(256, 64, GetParam());
  ASSERT_EQ(pane.displayer->InitDraw(128, 32, 0), 0);
  TestFrame narrow = GradientFrame(128, 32);
  TestFrame wide(128, 32, 160, 96);
  wide.Fill(255, 128, 128);
  for (size_t row = 0; row < 32; ++row)
    std::copy_n(&narrow.y[row * 128], 128, &wide.y[row * 160]);
  const Rgb dark = ColourOf(GetParam(), 16, 128, 128);
  const Rgb light = ColourOf(GetParam(), 235, 128, 128);
  pane.DrawUntil(wide, 1, 30, dark, 3);
  const ScreenShot shot(ClientOnScreen(pane.window.Handle()));
  for (int x = 8; x < 248; x += 8)
    EXPECT_NEAR(shot.At(x, 32).g, dark.g + (light.g - dark.g) * x / 255, 6) << x;

  pane.displayer->SetMirrorMode(1);
  EXPECT_TRUE(Near(pane.DrawUntil(narrow, 254, 30, dark, 3), dark, 3));
  EXPECT_TRUE(Near(WaitForPixel(pane.window.Handle(), 1, 30, light, 3), light, 3));
  const ScreenShot plain(ClientOnScreen(pane.window.Handle()));
  pane.displayer->SetDisplayCB(nullptr, [](auto...) {});  // composed outside the screen, for nobody
  pane.Draw(narrow);
  Pump(100);
  const ScreenShot composed(ClientOnScreen(pane.window.Handle()));
  for (int x = 0; x < 256; ++x)
    EXPECT_TRUE(Near(plain.At(x, x / 4), composed.At(x, x / 4), 0)) << x;
}

TEST_P(DDrawPicture, FollowsTheWindowWhereverItIs) {
  DDrawPane pane(160, 120, GetParam());
  ASSERT_EQ(pane.displayer->InitDraw(64, 48, 0), 0);
  TestFrame red = FlatFrame(64, 48, 81, 90, 240);
  TestFrame blue = FlatFrame(64, 48, 41, 240, 110);
  ExpectFlat(pane, red, {0, 0, 160, 120});

  SetWindowPos(pane.window.Handle(), nullptr, 300, 200, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  ExpectFlat(pane, blue, {0, 0, 160, 120});

  pane.window.ResizeClient(250, 180);
  ExpectFlat(pane, red, {0, 0, 250, 180});

  // Half of the window beyond the left edge and the top of the screen.
  SetWindowPos(pane.window.Handle(), nullptr, -100, -60, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  ExpectFlat(pane, blue, {130, 80, 250, 180});
}

TEST_P(DDrawPicture, PaintsOnlyTheUncoveredPart) {
  DDrawPane pane(200, 120, GetParam());
  ASSERT_EQ(pane.displayer->InitDraw(64, 48, 0), 0);
  TestFrame red = FlatFrame(64, 48, 81, 90, 240);
  ExpectFlat(pane, red, {0, 0, 200, 120});
  const RECT at = ClientOnScreen(pane.window.Handle());
  const TestWindow cover(100, 120, at.left, at.top, WS_POPUP);
  SetWindowPos(cover.Handle(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  Pump(50);
  TestFrame blue = FlatFrame(64, 48, 41, 240, 110);
  pane.DrawUntil(blue, 150, 60, Colour(blue));
  EXPECT_PIXEL(pane.window.Handle(), 104, 60, {Colour(blue)});
  EXPECT_PIXEL(pane.window.Handle(), 96, 60, {255, 255, 255});
}

TEST_P(DDrawPicture, DrawsTheLastFrameAgainWhenThePaneChanges) {
  DDrawPane pane(160, 120, GetParam());
  ASSERT_EQ(pane.displayer->InitDraw(64, 48, 0), 0);
  TestFrame red = FlatFrame(64, 48, 81, 90, 240);
  ExpectFlat(pane, red, {0, 0, 160, 120});
  pane.window.ResizeClient(240, 180);
  Pump(50);
  pane.displayer->AdjustWinRect();
  EXPECT_PIXEL(pane.window.Handle(), 230, 170, {Colour(red)});
  const TestWindow other(160, 120, 500, 300);
  Pump(50);
  pane.displayer->SetPlayWndEx(other.Handle(), 0, 0);
  EXPECT_PIXEL(other.Handle(), 80, 60, {Colour(red)});
}

TEST_P(DDrawPicture, ShowsOddSizes) {
  // Drivers may refuse the smallest YV12 surfaces; those frames take the other road by themselves.
  const FrameRoad road = GetParam() == FrameRoad::Yv12 ? FrameRoad::Automatic : FrameRoad::Rgb;
  DDrawPane pane(60, 50, road);
  for (const auto& [width, height] : {std::pair{63, 47}, {1, 1}}) {
    ASSERT_EQ(pane.displayer->InitDraw(static_cast<uint32_t>(width), static_cast<uint32_t>(height), 0), 0);
    TestFrame frame = FlatFrame(width, height, 200, 128, 128);
    if (width == 1 || height == 1) frame.u = frame.v = {128};
    const Rgb colour = ColourOf(pane.displayer->Road(), 200, 128, 128);
    pane.DrawUntil(frame, 0, 0, colour);
    for (const auto& [x, y] : {std::pair{0, 0}, {59, 0}, {0, 49}, {59, 49}})
      EXPECT_PIXEL(pane.window.Handle(), x, y, {colour});
  }
}

TEST(DDrawRoad, TheDriversYv12IsTakenWhenItWorks) {
  DDrawPane pane(160, 120);
  ASSERT_EQ(pane.displayer->InitDraw(64, 48, 0), 0);
  EXPECT_EQ(pane.displayer->Road(), FrameRoad::Yv12);
}

}  // namespace
