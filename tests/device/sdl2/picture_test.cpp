// SPDX-License-Identifier: MIT
// What a client sees on the screen through the DLL's exports and the SDL2 backend.
#include <gmock/gmock.h>

#include <atomic>
#include <memory>
#include <random>
#include <thread>

#include "nivral/nivral.h"
#include "support/frames.h"
#include "support/guarded_buffer.h"
#include "support/screen.h"
#include "support/test_window.h"

namespace {

constexpr Rgb kRed{254, 0, 0};
TestFrame Red(int width = 64, int height = 48) {
  return FlatFrame(width, height, 81, 90, 240);
}
class SdlLibrary : public testing::Environment {
 public:
  void SetUp() override { NIVRAL_InitializeEx(1); }
  void TearDown() override { EXPECT_EQ(NIVRAL_UnInitialize(), 0u); }
};
const auto* const g_library = testing::AddGlobalTestEnvironment(new SdlLibrary);

/// An SDL pane on a window of its own, used from the window's thread.
class Pane {
 public:
  Pane(int width, int height, int x = 40, int y = 60, DWORD style = WS_OVERLAPPEDWINDOW)
      : window(width, height, x, y, style) {
    NIVRAL_DWOpenDrawEx(&handle, 0);
    NIVRAL_DWSetHwnd(handle, window.Handle());
  }
  ~Pane() { NIVRAL_DWCloseDraw(handle); }

  uint32_t Draw(TestFrame& f, int64_t param2 = 0) {
    return NIVRAL_DWDrawYUV420(handle, f.y.data(), static_cast<uint32_t>(f.strideY), f.u.data(), f.v.data(),
                               static_cast<uint32_t>(f.strideUV), 7, param2);
  }
  uint32_t DrawTwice(TestFrame& f) {
    Draw(f);
    Pump(30);
    return Draw(f);
  }

  TestWindow window;
  void* handle = nullptr;
};

void ExpectFlat(HWND window, const Rgb& color) {
  const RECT client = ClientOnScreen(window);
  const int right = client.right - client.left - 1;
  const int bottom = client.bottom - client.top - 1;
  EXPECT_PIXEL(window, 0, 0, {color});
  EXPECT_PIXEL(window, right, 0, {color});
  EXPECT_PIXEL(window, 0, bottom, {color});
  EXPECT_PIXEL(window, right, bottom, {color});
  EXPECT_PIXEL(window, right / 2, bottom / 2, {color});
}

struct Redraw {
  Pane* pane;
  TestFrame* frame;
  HWND window = nullptr;
  int width = 0, height = 0;
  int count = 0;
};

void NIVRAL_CALL OnFlash(void* user, HWND window, int32_t width, int32_t height) {
  auto& redraw = *static_cast<Redraw*>(user);
  redraw.window = window;
  redraw.width = width;
  redraw.height = height;
  ++redraw.count;
  redraw.pane->Draw(*redraw.frame);
}

/// Exposures faster than any timer of Windows, for a while.
void ExposeOften(HWND window) {
  for (int i = 0; i < 50; ++i) {
    InvalidateRect(window, nullptr, FALSE);
    Pump(2);
  }
}

TEST(SdlPicture, AsksForARedrawWhenExposedOnceAFrameWasShown) {
  Pane pane(160, 120);
  TestFrame red = Red();
  Redraw redraw{&pane, &red};
  NIVRAL_DWSetFlashWndCB(pane.handle, &redraw, &OnFlash);
  NIVRAL_DWInitDraw(pane.handle, 64, 48, 0);
  ExposeOften(pane.window.Handle());
  EXPECT_EQ(redraw.count, 0);
  pane.Draw(red);
  ExposeOften(pane.window.Handle());
  EXPECT_GT(redraw.count, 10);
  EXPECT_EQ(redraw.window, pane.window.Handle());
  EXPECT_EQ(redraw.width, 160);
  EXPECT_EQ(redraw.height, 120);
  ExpectFlat(pane.window.Handle(), kRed);
  NIVRAL_DWFreeDraw(pane.handle);
  redraw.count = 0;
  ExposeOften(pane.window.Handle());
  EXPECT_EQ(redraw.count, 0);
}

TEST(SdlPicture, APaneLeftOpenOverARestartHarmsNobody) {
  Pane left(160, 120);
  TestFrame red = Red();
  NIVRAL_DWInitDraw(left.handle, 64, 48, 0);
  EXPECT_EQ(left.Draw(red), 0u);
  auto closed = std::make_unique<Pane>(160, 120, 640);
  NIVRAL_DWInitDraw(closed->handle, 64, 48, 0);
  NIVRAL_UnInitialize();
  NIVRAL_InitializeEx(1);
  EXPECT_EQ(left.Draw(red), 1u);

  Pane other(160, 120, 340);  // SDL gives it the number that `left` or `closed` had
  Pane another(160, 120, 940);
  for (Pane* pane : {&other, &another})
    NIVRAL_DWInitDraw(pane->handle, 64, 48, 0);
  closed.reset();
  NIVRAL_DWInitDraw(left.handle, 32, 48, 0);
  TestFrame narrow = Red(32, 48);
  EXPECT_EQ(left.DrawTwice(narrow), 0u);
  ExpectFlat(left.window.Handle(), kRed);
  for (Pane* pane : {&other, &another}) {
    Redraw redraw{pane, &red};
    NIVRAL_DWSetFlashWndCB(pane->handle, &redraw, &OnFlash);
    EXPECT_EQ(pane->DrawTwice(red), 0u);
    ExposeOften(pane->window.Handle());
    EXPECT_GT(redraw.count, 0);
  }
}

/// Puts a procedure on top of a window's, as clients do; it counts messages and passes them on.
WNDPROC g_below = nullptr;
int g_counted = 0;
LRESULT CALLBACK Counting(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  g_counted += message == WM_APP ? 1 : 0;
  return CallWindowProcW(g_below, window, message, wParam, lParam);
}

class Windows : public testing::TestWithParam<DWORD> {};

TEST_P(Windows, KeepTheirClientAreaAndProceduresUnderAPane) {
  const DWORD style = GetParam();
  const TestWindow parent(500, 400);
  Pane pane(160, 120, 40, 60, style & WS_CHILD ? WS_POPUP : style);
  HWND window = pane.window.Handle();
  if (style & WS_CHILD) {
    SetParent(window, parent.Handle());
    SetWindowLongPtrW(window, GWL_STYLE, static_cast<LONG_PTR>(WS_VISIBLE | style));
    pane.window.ResizeClient(160, 120);
  }
  const auto before = GetWindowLongPtrW(window, GWLP_WNDPROC);
  TestFrame red = Red();
  const int rounds = style == WS_POPUP ? 3 : 1;
  for (int round = 0; round < rounds; ++round) {
    NIVRAL_DWInitDraw(pane.handle, 64, 48, 0);
    EXPECT_EQ(pane.Draw(red), 0u);
    if (round == 1) {
      g_below = reinterpret_cast<WNDPROC>(
          SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Counting)));
    }
    for (const auto& [width, height] : {std::pair{320, 200}, {160, 90}}) {
      pane.window.ResizeClient(width, height);
      RECT client{};
      GetClientRect(window, &client);
      EXPECT_EQ(std::pair(client.right, client.bottom), (std::pair<LONG, LONG>(width, height)));
      NIVRAL_DWAdjustedWnd(pane.handle);
      EXPECT_EQ(pane.Draw(red), 0u);
    }
    // What is drawn in a child does not reach the screens of test beds.
    if (!(style & WS_CHILD)) {
      pane.DrawTwice(red);
      EXPECT_PIXEL(window, 159, 89, {kRed});
    }
    g_counted = 0;
    SendMessageW(window, WM_APP, 0, 0);
    EXPECT_EQ(g_counted, round > 0 ? 1 : 0);
    NIVRAL_DWFreeDraw(pane.handle);
    SendMessageW(window, WM_APP, 0, 0);
    EXPECT_EQ(g_counted, round > 0 ? 2 : 0) << "the client's procedure was lost with the pane";
    EXPECT_TRUE(round > 0 || GetWindowLongPtrW(window, GWLP_WNDPROC) == before);
  }
}
INSTANTIATE_TEST_SUITE_P(OfEachKind, Windows,
                         testing::Values(WS_POPUP, WS_POPUP | WS_BORDER, WS_OVERLAPPEDWINDOW,
                                         WS_CAPTION | WS_SYSMENU, WS_CHILD));

}  // namespace
