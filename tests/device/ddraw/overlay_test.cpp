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

/// The smallest rectangle that holds every pixel of one colour, and how many there are.
struct Found {
  RECT box{INT_MAX, INT_MAX, -1, -1};
  int count = 0;
};

Found Find(const ScreenShot& shot, const Rgb& colour) {
  Found found;
  for (int y = 0; y < shot.Height(); ++y) {
    for (int x = 0; x < shot.Width(); ++x) {
      if (!Same(shot.At(x, y), colour)) continue;
      ++found.count;
      found.box.left = std::min<LONG>(found.box.left, x);
      found.box.top = std::min<LONG>(found.box.top, y);
      found.box.right = std::max<LONG>(found.box.right, x);
      found.box.bottom = std::max<LONG>(found.box.bottom, y);
    }
  }
  return found;
}

class DDrawOverlay : public testing::Test {
 protected:
  DDrawOverlay() { EXPECT_EQ(pane.displayer->InitDraw(160, 120, 0), 0); }

  /// Draws until the newest state is on the screen.
  ScreenShot Shoot(TestFrame& frame) {
    for (int i = 0; i < 2; ++i) {
      const uint32_t before = pane.displayer->ShownCount();
      pane.Draw(frame);
      for (int wait = 0; wait < 1000 && pane.displayer->ShownCount() == before; ++wait)
        Pump(5);
      Pump(60);  // presenting is asynchronous
    }
    return ScreenShot(ClientOnScreen(pane.window.Handle()));
  }
  Found ShootAndFind(const Rgb& colour) { return Find(Shoot(grey), colour); }

  CDirectDraw& D() { return *pane.displayer; }

  DDrawPane pane{320, 240, FrameRoad::Rgb};
  TestFrame grey = GreyFrame(160, 120);
};

TEST_F(DDrawOverlay, TextIsPlacedInVideoPixelsAndHasItsColour) {
  D().SetOSDText(1, "HHHH", 20, 30, 0, 0x0000FF);
  Found text = ShootAndFind(kRed);
  EXPECT_GT(text.count, 40);
  EXPECT_GE(text.box.left, 40);
  EXPECT_LT(text.box.left, 46);
  EXPECT_GE(text.box.top, 60);
  EXPECT_LE(text.box.bottom, 60 + 18);

  D().SetOSDText(1, "HHHH", 20, 30, 1, 0x00FF00);
  text = ShootAndFind(kGreen);
  EXPECT_GT(text.count, 40);
  EXPECT_GE(text.box.top, 180) << "y counts from the bottom";
  EXPECT_LE(text.box.bottom, 180 + 18);

  D().SetOSDText(1, "", 20, 30, 1, 0x00FF00);
  EXPECT_EQ(ShootAndFind(kGreen).count, 0);
  D().SetOSDText(0, "gone", 0xFFFFFFF0, 10, 0, 0x00FF00);
  D().SetOSDText(2, "gone", 10, 0xFFFFFFF0, 1, 0x00FF00);
  D().SetOSDText(3, "gone", 10, 4000, 1, 0x00FF00);
  EXPECT_EQ(ShootAndFind(kGreen).count, 0);
}

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

TEST_F(DDrawOverlay, TheMosaicHidesItsRectangleOnly) {
  TestFrame picture = GradientFrame(160, 120);
  const ScreenShot plain = Shoot(picture);
  const RECT area{62, 41, 182, 101};
  D().SetMosaics(&area);
  D().SetMosaicLevel(20);  // blocks of 9 pixels
  EXPECT_TRUE(Same(Shoot(picture).At(100, 60), plain.At(100, 60))) << "the flag is off";
  D().SetMosaicFlag(1);
  const ScreenShot hidden = Shoot(picture);
  for (int y = 41; y < 101; y += 4) {
    for (int x = 62; x < 182; x += 5)
      EXPECT_TRUE(Same(hidden.At(x, y), plain.At(62 + (x - 62) / 9 * 9, 41 + (y - 41) / 9 * 9)))
          << x << "," << y;
  }
  for (const auto& [x, y] : {std::pair{61, 60}, {60, 41}, {100, 40}, {200, 60}, {100, 110}})
    EXPECT_TRUE(Same(hidden.At(x, y), plain.At(x, y))) << x << "," << y;

  const RECT wild{INT_MIN, -5, INT_MAX, 3000};
  D().SetMosaics(&wild);
  D().SetMosaicLevel(0x7FFFFFFF);
  EXPECT_TRUE(Same(Shoot(picture).At(300, 200), plain.At(0, 0))) << "one block over everything";
  D().SetMosaicLevel(0);
  EXPECT_TRUE(Same(Shoot(picture).At(300, 200), plain.At(300, 200)));
}

TEST_F(DDrawOverlay, LandmarksAndFaceBoxesAreGreen) {
  const auto bits = [](float value) { return std::bit_cast<uint32_t>(value); };
  const uint32_t x[] = {bits(30), bits(100), bits(50)};
  const uint32_t y[] = {bits(20), bits(100), bits(20)};
  const uint32_t left = bits(80), top = bits(40), right = bits(140), bottom = bits(100);
  D().SetDsmAlgInfo(3, x, y, 1, &left, &top, &right, &bottom, 2);
  D().SetDsmAlgInfo(3, x, y, 1, &left, &top, &right, &bottom, 2);
  const ScreenShot shot = Shoot(grey);
  EXPECT_TRUE(Same(shot.At(60, 40), kGreen));
  EXPECT_TRUE(Same(shot.At(100, 40), kGreen));
  EXPECT_FALSE(Same(shot.At(200, 200), kGreen)) << "every second landmark is left out";
  // Four lines grow outward from the mapped box at 160,80.
  EXPECT_TRUE(Same(shot.At(158, 90), kGreen)) << "the corner";
  EXPECT_FALSE(Same(shot.At(158, 140), kGreen)) << "the middle of the side";

  Pump(1100);
  EXPECT_EQ(ShootAndFind(kGreen).count, 0) << "records go after a second";
}

/// A box from `left` on, 20 pixels wide, of a truck at 12.3 m unless it is to have no label.
void SetBox(CDirectDraw& displayer, float left, bool withLabels = false) {
  const auto bits = [](float value) { return std::bit_cast<uint32_t>(value); };
  const uint32_t x1 = bits(left), y1 = bits(30), x2 = bits(left + 20), y2 = bits(90);
  const uint16_t classId = withLabels ? 4 : 0, distance = withLabels ? 123 : 0, zero = 0;
  displayer.SetAlgInfo(1, &x1, &y1, &x2, &y2, &classId, &distance, &zero, &zero, 1);
}

TEST_F(DDrawOverlay, DriverAssistanceBoxesAreBurnedIntoACopy) {
  const std::vector<uint8_t> before = grey.y;
  SetBox(D(), 40);
  const ScreenShot shot = Shoot(grey);
  const Rgb background = ColourOf(FrameRoad::Rgb, 126, 128, 128);
  const auto hasBox = [&](const ScreenShot& at, int left) {
    int changed = 0;
    for (int y = 70; y < 170; y += 10)
      changed += !Near(at.At(left * 2 + 1, y), background, 20);
    return changed == 10;
  };
  EXPECT_TRUE(hasBox(shot, 40)) << "the left edge, two screen pixels per video pixel";
  EXPECT_TRUE(Near(shot.At(70, 120), background, 2));
  EXPECT_EQ(grey.y, before) << "the client's planes stay as they are";

  D().SetPause(1);
  SetBox(D(), 100);
  EXPECT_TRUE(hasBox(Shoot(grey), 40)) << "a paused pane keeps its record";
  D().SetPause(0);
  EXPECT_TRUE(hasBox(Shoot(grey), 100)) << "and has taken none";
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

struct DecodeCall {
  uint8_t* y = nullptr;
  uint32_t stride = 0, width = 0, height = 0, format = 0;
  int64_t param2 = 0;
  DWORD thread = 0;
  int count = 0;
};

void NIVRAL_CALL OnDecode(uint8_t* y, uint32_t stride, uint32_t width, uint32_t height, int64_t param2,
                          uint32_t format, void* user) {
  auto& call = *static_cast<DecodeCall*>(user);
  call = {y, stride, width, height, format, param2, GetCurrentThreadId(), call.count + 1};
}

TEST_F(DDrawOverlay, TheDecodeCallbackGetsTheClientsFrame) {
  DecodeCall call;
  D().SetDecCB(&call, &OnDecode);
  pane.Draw(grey, -7);
  EXPECT_EQ(call.y, grey.y.data());
  EXPECT_EQ(call.stride, 160u);
  EXPECT_EQ(call.width, 160u);
  EXPECT_EQ(call.height, 120u);
  EXPECT_EQ(call.format, 3u);
  EXPECT_EQ(call.param2, -7);
  EXPECT_EQ(call.thread, GetCurrentThreadId());
  D().FreeDraw();
  pane.Draw(grey);
  EXPECT_EQ(call.count, 1) << "refused frames are not reported";
}

}  // namespace
