// SPDX-License-Identifier: MIT
// Where the DirectDraw backend puts its picture, on both roads, and what the client draws over it.
#include <atomic>

#include "backends/ddraw/ddraw_displayer.h"
#include "support/pane.h"

namespace {

constexpr Rgb kRed{255, 0, 0};
bool IsRed(const Rgb& c) {
  return Near(c, kRed, 0);
}

class DDrawPicture : public testing::TestWithParam<UploadFormat> {
 protected:
  DDrawPicture() { displayer.SetUploadFormat(GetParam()); }

  void Start(int width, int height) {
    pane.window.ResizeClient(width, height);
    pane.Start(64, 48);
  }
  Rgb Colour(const TestFrame& f) const { return ToRgb(f.y[0], f.u[0], f.v[0], pane.limitedRange); }

  /// Draws until an area has the frame's colour at its edges.
  void ExpectFlat(TestFrame& frame, const RECT& area) {
    const auto left = static_cast<int>(area.left), right = static_cast<int>(area.right) - 1;
    const auto top = static_cast<int>(area.top), bottom = static_cast<int>(area.bottom) - 1;
    EXPECT_EQ(pane.Draw(frame), 0u);
    for (const auto& [x, y] :
         {std::pair{left, top}, {(left + right) / 2, bottom}, {right, top}, {right, bottom}})
      EXPECT_PIXEL(pane.Window(), x, y, {Colour(frame)});
  }

  Pane pane{2, 160, 120};
  CDirectDraw& displayer = pane.As<CDirectDraw>();
  TestFrame red = FlatFrame(64, 48, 81, 90, 240), blue = FlatFrame(64, 48, 41, 240, 110);
};

INSTANTIATE_TEST_SUITE_P(Roads, DDrawPicture, testing::Values(UploadFormat::Yv12, UploadFormat::Rgb),
                         [](const auto& road) { return road.param == UploadFormat::Yv12 ? "Yv12" : "Rgb"; });

TEST_P(DDrawPicture, StretchesIntoThePlayRectangleOnly) {
  Start(240, 160);
  const RECT play{40, 30, 200, 130}, empty{50, 50, 50, 90};
  displayer.SetPlayRect(&play);
  ExpectFlat(blue, play);
  const ScreenShot shot(ClientOnScreen(pane.Window()));
  for (const auto& [x, y] : {std::pair{38, 60}, {202, 60}, {100, 28}, {100, 132}})
    EXPECT_FALSE(Near(shot.At(x, y), Colour(blue), 20)) << x << "," << y;
  displayer.SetPlayRect(&empty);
  ExpectFlat(red, {0, 0, 240, 160});
}

TEST_P(DDrawPicture, IsTheSameComposedOutsideTheScreenAndPlain) {
  Start(128, 96);
  TestFrame gradient = GradientFrame(64, 48);
  const ScreenShot plain = pane.Show(gradient);
  displayer.SetDisplayCB(nullptr, [](auto...) {});  // composed, for nobody
  const ScreenShot composed = pane.Show(gradient);
  for (int x = 0; x < 128; ++x)
    EXPECT_TRUE(Near(plain.At(x, 20 + x / 4), composed.At(x, 20 + x / 4), 0)) << x;
}

TEST_P(DDrawPicture, ReachesWhatIsSeenOfTheWindow) {
  Start(250, 180);
  SetWindowPos(pane.Window(), nullptr, -100, -60, 0, 0, SWP_NOSIZE | SWP_NOZORDER);  // half beyond the screen
  ExpectFlat(blue, {130, 80, 250, 180});
  SetWindowPos(pane.Window(), nullptr, 40, 60, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  pane.Settle(64, 48);
  const RECT at = ClientOnScreen(pane.Window());
  const TestWindow cover(100, 180, at.left, at.top, WS_POPUP);
  SetWindowPos(cover.Handle(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  EXPECT_PIXEL(pane.Window(), 96, 60, {255, 255, 255});
  ExpectFlat(red, {104, 0, 250, 180});
  EXPECT_PIXEL(pane.Window(), 96, 60, {255, 255, 255});
}

TEST_P(DDrawPicture, IsDrawnAgainWhenThePaneChanges) {
  Start(160, 120);
  pane.Draw(red);
  const auto reaches = [&](HWND window, int x, int y, auto change) {
    return WaitUntil([&] {  // the window may be erased late
      change();
      Pump(50);
      return Near(PixelOf(window, x, y), Colour(red), 2);
    });
  };
  pane.window.ResizeClient(240, 180);
  EXPECT_TRUE(reaches(pane.Window(), 230, 170, [&] { displayer.AdjustWinRect(); }));
  const TestWindow other(160, 120, 500, 300);
  EXPECT_TRUE(reaches(other.Handle(), 80, 60, [&] { displayer.SetPlayWndEx(other.Handle(), 0, 0); }));
}

TEST(DDrawRoad, TheDriversYv12IsTakenWhenItWorks) {
  Pane pane(2, 160, 120);
  pane.Init(64, 48);
  EXPECT_EQ(pane.As<CDirectDraw>().ActiveUploadFormat(), UploadFormat::Yv12);
}

struct DisplayCall {
  int32_t index = 0, clientWidth = 0, clientHeight = 0;
  uint32_t width = 0, height = 0, mirror = 0;
  int64_t param2 = 0;
  DWORD thread = 0;
  std::atomic<int> count{0};
};

void NIVRAL_CALL PaintAndNote(int32_t index, void* hdc, uint32_t width, uint32_t height, int64_t param2,
                              int32_t clientWidth, int32_t clientHeight, uint32_t mirror, void* user) {
  auto& call = *static_cast<DisplayCall*>(user);
  call.index = index, call.width = width, call.height = height, call.mirror = mirror;
  call.clientWidth = clientWidth, call.clientHeight = clientHeight;
  call.param2 = param2, call.thread = GetCurrentThreadId();
  const auto dc = static_cast<HDC>(hdc);
  const RECT rect{100, 80, 140, 120};
  SetDCBrushColor(dc, RGB(255, 0, 0));
  FillRect(dc, &rect, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
  SelectObject(dc, GetStockObject(BLACK_BRUSH));
  SetViewportOrgEx(dc, 5, 5, nullptr);  // left as it is: not the next frame's business
  ++call.count;
}

class DDrawOverlay : public testing::Test {
 protected:
  DDrawOverlay() { pane.Start(160, 120); }

  /// What is red once the newest state is on the screen.
  Found ShowAndFind(int64_t param2 = 0) {
    for (int i = 0; i < 2; ++i) {
      const uint32_t before = displayer.ShownCount();
      pane.Draw(grey, param2);
      EXPECT_TRUE(WaitUntil([&] { return displayer.ShownCount() != before; }));
    }
    Pump(60);  // presenting is asynchronous
    return Find(ScreenShot(ClientOnScreen(pane.Window())), &IsRed);
  }

  Pane pane{2, 320, 240};
  CDirectDraw& displayer = pane.As<CDirectDraw>();
  TestFrame grey = FlatFrame(160, 120, 126, 128, 128);
};

TEST_F(DDrawOverlay, LongTextIsBrokenBetweenWordsAndStaysInThePlayRectangle) {
  const RECT play{60, 40, 260, 200};
  displayer.SetPlayRect(&play);
  displayer.SetOSDText(0, "HHHH HHHH HHHH HHHH HHHH HHHH HHHH HHHH HHHH", 60, 40, 0, 0x0000FF);
  const Found text = ShowAndFind();
  EXPECT_GT(text.count, 100);
  EXPECT_GE(text.box.left, 60 + 60 * 200 / 160);
  EXPECT_LT(text.box.right, 260);
  EXPECT_GT(text.box.bottom - text.box.top, 14) << "more than one line";
}

TEST_F(DDrawOverlay, TheClientDrawsInClientCoordinates) {
  DisplayCall call;
  displayer.SetIndex(3);
  displayer.SetMirrorMode(2);
  displayer.SetDisplayCB(&call, &PaintAndNote);
  for (const RECT& play : {RECT{}, RECT{30, 20, 230, 170}}) {
    displayer.SetPlayRect(&play);
    const Found painted = ShowAndFind(0x123456789ABCDEF0);
    EXPECT_EQ(painted.count, 40 * 40);
    EXPECT_EQ(painted.box.left, 100);
    EXPECT_EQ(painted.box.top, 80);
  }
  displayer.FreeDraw();
  EXPECT_TRUE(call.index == 3 && call.width == 160 && call.height == 120 && call.mirror == 2);
  EXPECT_TRUE(call.param2 == 0x123456789ABCDEF0 && call.clientWidth == 320 && call.clientHeight == 240);
  EXPECT_NE(call.thread, GetCurrentThreadId());
  const int count = call.count;
  Pump(50);
  EXPECT_EQ(call.count, count) << "nobody calls after FreeDraw";
}

}  // namespace
