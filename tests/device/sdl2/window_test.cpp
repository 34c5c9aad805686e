// SPDX-License-Identifier: MIT
// SDL panes and the client's windows: exposures, procedures, styles, tags, a restart of SDL.
#include "sdl_test.h"

namespace {

constexpr Rgb kRed{254, 0, 0};

TestFrame Red(int width = 64, int height = 48) {
  return FlatFrame(width, height, 81, 90, 240);
}

struct Redraw {
  explicit Redraw(Pane& on) : pane(on) { NIVRAL_DWSetFlashWndCB(pane.handle, this, &OnFlash); }
  static void NIVRAL_CALL OnFlash(void* user, HWND window, int32_t width, int32_t height) {
    auto& redraw = *static_cast<Redraw*>(user);
    redraw.window = window, redraw.width = width, redraw.height = height;
    ++redraw.count;
    redraw.pane.Draw(redraw.frame);
  }
  /// Exposures faster than any timer of Windows, for a while; how many were told.
  int ExposeOften() {
    count = 0;
    for (int i = 0; i < 20; ++i) {
      InvalidateRect(pane.Window(), nullptr, FALSE);
      Pump(2);
    }
    return count;
  }
  Pane& pane;
  TestFrame frame = Red();
  HWND window = nullptr;
  int width = 0, height = 0, count = 0;
};

class SdlWindows : public SdlTest {
 protected:
  Pane pane{0, 160, 120};
  TestFrame red = Red();
};

TEST_F(SdlWindows, AskForARedrawWhenExposedOnceAFrameWasShown) {
  Redraw redraw(pane);
  pane.Init(64, 48);
  EXPECT_EQ(redraw.ExposeOften(), 0);
  pane.Draw(red);
  EXPECT_GT(redraw.ExposeOften(), 10);
  EXPECT_TRUE(redraw.window == pane.Window() && redraw.width == 160 && redraw.height == 120);
  EXPECT_PIXEL(pane.Window(), 80, 60, {kRed});
  NIVRAL_DWFreeDraw(pane.handle);
  EXPECT_EQ(redraw.ExposeOften(), 0);
}

TEST_F(SdlWindows, APaneLeftOpenOverARestartHarmsNobody) {
  NIVRAL_DWSetOSDText(pane.handle, 0, "kept in a font and a texture", 10, 30, 0, 0xFFFFFF);
  pane.Start(64, 48);
  auto closed = std::make_unique<Pane>(0, 160, 120, 640);
  closed->Init(64, 48);
  NIVRAL_UnInitialize();
  NIVRAL_InitializeEx(1);
  EXPECT_EQ(pane.Draw(red), 1u);

  Pane other(0, 160, 120, 340), another(0, 160, 120, 940);  // SDL gives them the numbers that others had
  other.Start(64, 48);
  another.Start(64, 48);
  closed.reset();
  pane.Start(32, 48);
  const ScreenShot shot(ClientOnScreen(pane.Window()));
  EXPECT_GT(Find(shot, [](const Rgb& c) { return c.b > 150; }).count, 20) << "its text";
  for (Pane* each : {&other, &another})
    EXPECT_GT(Redraw(*each).ExposeOften(), 0);
}

TEST_F(SdlWindows, AreTaggedAsLongAsAPaneUsesThem) {
  EXPECT_EQ(GetPropA(pane.Window(), "sdl2-display"), static_cast<BaseDisplayer*>(pane.handle));
  const TestWindow other(100, 100, 400, 60);
  auto displayer = std::make_unique<SDLDisplayer>();
  displayer->SetPlayWnd(other.Handle());
  EXPECT_EQ(GetPropA(other.Handle(), "sdl2-display"), displayer.get());
  displayer->SetPlayWnd(pane.Window());
  EXPECT_EQ(GetPropA(other.Handle(), "sdl2-display"), nullptr);
  displayer.reset();
  EXPECT_EQ(GetPropA(pane.Window(), "sdl2-display"), nullptr);
}

TEST_F(SdlWindows, AreNeededToBind) {
  SDLDisplayer displayer;
  EXPECT_EQ(displayer.InitDraw(64, 48, 0), 1);
  displayer.AdjustWinRect();
  displayer.SetPlayWnd(pane.Window());
  EXPECT_EQ(displayer.InitDraw(64, 48, 0), 0);
  EXPECT_EQ(displayer.InitDraw(64, 48, 0), 1) << "a size that is set";
  EXPECT_EQ(displayer.InitDraw(0, 48, 0), 1);
  EXPECT_EQ(displayer.InitDraw(32, 48, 0), 0);
  pane.window.Destroy();
  EXPECT_EQ(displayer.FreeDraw(), 0);
  EXPECT_EQ(displayer.FreeDraw(), 1) << "nothing left to free";
  EXPECT_EQ(displayer.InitDraw(64, 48, 0), 1);
}

/// Puts a procedure on top of a window's, as clients do; it counts messages and passes them on.
WNDPROC g_below = nullptr;
int g_counted = 0;
LRESULT CALLBACK Counting(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  g_counted += message == WM_APP ? 1 : 0;
  return CallWindowProcW(g_below, window, message, wParam, lParam);
}

class SdlWindowStyles : public SdlTest, public testing::WithParamInterface<DWORD> {};

TEST_P(SdlWindowStyles, KeepTheirClientAreaAndProceduresUnderAPane) {
  const DWORD style = GetParam();
  const TestWindow parent(500, 400);
  Pane pane(0, 160, 120, 40, 60, style & WS_CHILD ? WS_POPUP : style);
  HWND window = pane.Window();
  if (style & WS_CHILD) {
    SetParent(window, parent.Handle());
    SetWindowLongPtrW(window, GWL_STYLE, static_cast<LONG_PTR>(WS_VISIBLE | style));
  }
  const auto before = GetWindowLongPtrW(window, GWLP_WNDPROC);
  TestFrame red = Red();
  for (int round = 0; round < (style == WS_POPUP ? 3 : 1); ++round) {
    pane.Init(64, 48);
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
      pane.Settle(64, 48);
      pane.Draw(red);
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
INSTANTIATE_TEST_SUITE_P(OfEachKind, SdlWindowStyles,
                         testing::Values(WS_POPUP, WS_POPUP | WS_BORDER, WS_OVERLAPPEDWINDOW,
                                         WS_CAPTION | WS_SYSMENU, WS_CHILD));

}  // namespace
