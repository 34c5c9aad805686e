// SPDX-License-Identifier: MIT
// What the DirectDraw backend draws over the picture, and what it tells the client.
#include <gmock/gmock.h>

#include <atomic>
#include <bit>
#include <climits>

#include "ddraw_pane.h"

namespace {

constexpr Rgb kRed{255, 0, 0};
constexpr Rgb kGreen{0, 255, 0};

bool Same(const Rgb& a, const Rgb& b) {
  return Near(a, b, 0);
}

class DDrawOverlay : public testing::Test {
 protected:
  DDrawOverlay() { EXPECT_EQ(pane.displayer->InitDraw(160, 120, 0), 0); }

  /// Draws until the newest state is on the screen.
  ScreenShot Shoot(TestFrame& frame) {
    for (int i = 0; i < 2; ++i) {
      const uint32_t before = pane.displayer->ShownCount();
      pane.Draw(frame);
      WaitUntil([&] { return pane.displayer->ShownCount() != before; });
      Pump(60);  // presenting is asynchronous
    }
    return ScreenShot(ClientOnScreen(pane.window.Handle()));
  }
  Found ShootAndFind(const Rgb& colour) {
    return Find(Shoot(grey), [&](const Rgb& c) { return Same(c, colour); });
  }

  CDirectDraw& D() { return *pane.displayer; }

  DDrawPane pane{320, 240, FrameRoad::Rgb};
  TestFrame grey = GreyFrame(160, 120);
};

TEST_F(DDrawOverlay, LongTextIsBrokenBetweenWordsAndStaysInTheArea) {
  const RECT play{60, 40, 260, 200};
  D().SetPlayRect(&play);
  D().SetOSDText(0, "HHHH HHHH HHHH HHHH HHHH HHHH HHHH HHHH HHHH", 60, 40, 0, 0x0000FF);
  const Found text = ShootAndFind(kRed);
  EXPECT_GT(text.count, 100);
  EXPECT_GE(text.box.left, 60 + 60 * 200 / 160);
  EXPECT_LT(text.box.right, 260);
  EXPECT_GT(text.box.bottom - text.box.top, 14) << "more than one line";
}

/// A box from `left` on, 20 pixels wide, of a truck at 12.3 m unless it is to have no label.
void SetBox(CDirectDraw& displayer, float left, bool withLabels = false) {
  const auto bits = [](float value) { return std::bit_cast<uint32_t>(value); };
  const uint32_t x1 = bits(left), y1 = bits(30), x2 = bits(left + 20), y2 = bits(90);
  const uint16_t classId = withLabels ? 4 : 0, distance = withLabels ? 123 : 0, zero = 0;
  displayer.SetAlgInfo(1, &x1, &y1, &x2, &y2, &classId, &distance, &zero, &zero, 1);
}

TEST_F(DDrawOverlay, LettersStandInTheBurntInBars) {
  SetBox(D(), 40, true);
  const Found letters = ShootAndFind({255, 255, 255});
  EXPECT_GT(letters.count, 60);
  // "truck" above the box at 40,30 and "12.3m" below it, in bars of 30 and 24 by 10 video pixels.
  EXPECT_GE(letters.box.left, 80);
  EXPECT_LE(letters.box.right, 80 + 62);
  EXPECT_GE(letters.box.top, 38);
  EXPECT_LE(letters.box.bottom, 204);
}

void NIVRAL_CALL HoldWorker(int32_t, void*, uint32_t, uint32_t, int64_t, int32_t, int32_t, uint32_t,
                            void* user) {
  static_cast<std::atomic<int>*>(user)->wait(1);
}

TEST_F(DDrawOverlay, BoxesAreThoseOfTheFrameThoughTheWorkerSkipsSome) {
  std::atomic<int> held{1};
  D().SetDisplayCB(&held, &HoldWorker);
  for (int i = 0; i < 10; ++i) {
    SetBox(D(), static_cast<float>(10 * i));
    pane.Draw(grey);
  }
  held = 0;
  held.notify_all();
  const Rgb background = ColourOf(FrameRoad::Rgb, 126, 128, 128);
  const ScreenShot shot = Shoot(grey);
  EXPECT_FALSE(Near(shot.At(181, 120), background, 20));
  EXPECT_TRUE(Near(shot.At(21, 120), background, 2));
  D().SetDisplayCB(nullptr, nullptr);
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
  call.index = index;
  call.width = width;
  call.height = height;
  call.param2 = param2;
  call.clientWidth = clientWidth;
  call.clientHeight = clientHeight;
  call.mirror = mirror;
  call.thread = GetCurrentThreadId();
  const auto dc = static_cast<HDC>(hdc);
  const RECT rect{100, 80, 140, 120};
  SetDCBrushColor(dc, RGB(255, 0, 0));
  FillRect(dc, &rect, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
  SelectObject(dc, GetStockObject(BLACK_BRUSH));
  SetViewportOrgEx(dc, 5, 5, nullptr);  // left as it is: not the next frame's business
  ++call.count;
}

TEST_F(DDrawOverlay, TheClientDrawsInClientCoordinates) {
  DisplayCall call;
  D().SetIndex(3);
  D().SetMirrorMode(2);
  D().SetDisplayCB(&call, &PaintAndNote);
  pane.Draw(grey, 0x123456789ABCDEF0);
  Found painted;
  for (const RECT& play : {RECT{}, RECT{30, 20, 230, 170}}) {
    D().SetPlayRect(&play);
    painted = ShootAndFind(kRed);
    EXPECT_EQ(painted.count, 40 * 40);
    EXPECT_EQ(painted.box.left, 100);
    EXPECT_EQ(painted.box.top, 80);
  }
  pane.Draw(grey, 0x123456789ABCDEF0);
  Pump(100);
  D().FreeDraw();
  EXPECT_EQ(call.index, 3);
  EXPECT_EQ(call.width, 160u);
  EXPECT_EQ(call.height, 120u);
  EXPECT_EQ(call.param2, 0x123456789ABCDEF0);
  EXPECT_EQ(call.clientWidth, 320);
  EXPECT_EQ(call.clientHeight, 240);
  EXPECT_EQ(call.mirror, 2u);
  EXPECT_NE(call.thread, GetCurrentThreadId());
  const int count = call.count;
  Pump(50);
  EXPECT_EQ(call.count, count) << "nobody calls after FreeDraw";
}

}  // namespace
