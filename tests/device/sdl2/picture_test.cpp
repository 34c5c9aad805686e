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
constexpr Rgb kGreen{0, 255, 1};
constexpr Rgb kBlue{0, 0, 254};
constexpr Rgb kWhite{255, 255, 255};

TestFrame Red(int width = 64, int height = 48) {
  return FlatFrame(width, height, 81, 90, 240);
}
TestFrame Green(int width = 64, int height = 48) {
  return FlatFrame(width, height, 145, 54, 34);
}
TestFrame Blue(int width = 64, int height = 48) {
  return FlatFrame(width, height, 41, 240, 110);
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

TEST(SdlPicture, ShowsFlatColoursOverTheWholeClientArea) {
  Pane pane(200, 120);
  NIVRAL_DWInitDraw(pane.handle, 64, 48, 0);
  struct {
    TestFrame frame;
    Rgb color;
  } cases[] = {
      {Red(), kRed}, {Green(), kGreen}, {Blue(), kBlue}, {FlatFrame(64, 48, 126, 128, 128), {128, 128, 128}}};
  for (auto& c : cases) {
    EXPECT_EQ(pane.DrawTwice(c.frame), 0u);
    ExpectFlat(pane.window.Handle(), c.color);
  }
}

TEST(SdlPicture, ScalesAGradientAndHonoursStridesAndMirror) {
  Pane pane(256, 64);
  TestFrame narrow = GradientFrame(128, 32);
  TestFrame wide(128, 32, 160, 96);
  wide.Fill(255, 0, 0);
  for (int row = 0; row < 32; ++row) {
    std::copy_n(&narrow.y[static_cast<size_t>(row * 128)], 128, &wide.y[static_cast<size_t>(row * 160)]);
    if (row < 16) std::fill_n(&wide.u[static_cast<size_t>(row * 96)], 64, uint8_t{128});
    if (row < 16) std::fill_n(&wide.v[static_cast<size_t>(row * 96)], 64, uint8_t{128});
  }
  NIVRAL_DWInitDraw(pane.handle, 128, 32, 0);
  pane.DrawTwice(wide);
  EXPECT_PIXEL(pane.window.Handle(), 1, 30, {0, 0, 0});
  EXPECT_PIXEL(pane.window.Handle(), 254, 30, {254, 254, 254});
  WaitForPixel(pane.window.Handle(), 128, 32, {128, 128, 128}, 4);
  const ScreenShot shot(ClientOnScreen(pane.window.Handle()));
  for (int x = 8; x < 248; x += 8)
    EXPECT_NEAR(shot.At(x, 32).g, 255 * x / 255, 6) << x;

  NIVRAL_DWSetMirrorMode(pane.handle, 1);
  pane.DrawTwice(narrow);
  EXPECT_PIXEL(pane.window.Handle(), 1, 30, {254, 254, 254});
  EXPECT_PIXEL(pane.window.Handle(), 254, 30, {0, 0, 0});
}

TEST(SdlPicture, FollowsTheWindowAndComesBackAfterFreeDraw) {
  Pane pane(160, 120);
  TestFrame red = Red();
  NIVRAL_DWInitDraw(pane.handle, 64, 48, 0);
  pane.DrawTwice(red);
  ExpectFlat(pane.window.Handle(), kRed);

  pane.window.ResizeClient(320, 200);
  NIVRAL_DWAdjustedWnd(pane.handle);
  TestFrame blue = Blue();
  pane.DrawTwice(blue);
  ExpectFlat(pane.window.Handle(), kBlue);

  NIVRAL_DWFreeDraw(pane.handle);
  Pump(50);
  EXPECT_PIXEL(pane.window.Handle(), 160, 100, {kWhite});
  EXPECT_EQ(pane.Draw(red), 1u);

  NIVRAL_DWInitDraw(pane.handle, 64, 48, 0);
  EXPECT_EQ(pane.DrawTwice(red), 0u);
  ExpectFlat(pane.window.Handle(), kRed);
}

TEST(SdlPicture, TakesANewVideoSizeAndOddSizes) {
  Pane pane(160, 120);
  for (const auto& [width, height] : {std::pair{64, 48}, {128, 96}, {63, 47}, {1, 1}, {64, 1}}) {
    NIVRAL_DWInitDraw(pane.handle, static_cast<uint32_t>(width), static_cast<uint32_t>(height), 0);
    TestFrame frame = FlatFrame(width, height, 126, 128, 128);
    EXPECT_EQ(pane.DrawTwice(frame), 0u) << width << "x" << height;
    ExpectFlat(pane.window.Handle(), {128, 128, 128});
  }
}

TEST(SdlPicture, DropsFramesThatCannotBeShown) {
  Pane pane(160, 120);
  TestFrame red = Red();
  EXPECT_EQ(pane.Draw(red), 1u) << "before InitDraw";
  NIVRAL_DWInitDraw(pane.handle, 64, 48, 0);
  EXPECT_EQ(pane.DrawTwice(red), 0u);

  ShowWindow(pane.window.Handle(), SW_HIDE);
  Pump(20);
  EXPECT_EQ(pane.Draw(red), 1u) << "hidden";
  ShowWindow(pane.window.Handle(), SW_SHOWNOACTIVATE);
  Pump(20);
  EXPECT_EQ(pane.DrawTwice(red), 0u);
  ExpectFlat(pane.window.Handle(), kRed);

  TestFrame tooNarrow = Red(32, 48);
  EXPECT_EQ(pane.Draw(tooNarrow), 1u) << "strides shorter than a row";
  EXPECT_EQ(NIVRAL_DWDrawYUV420(pane.handle, nullptr, 64, nullptr, nullptr, 32, 0, 0), 1u);
  pane.window.Destroy();
  EXPECT_EQ(pane.Draw(red), 1u) << "window gone";

  // Frames of a size that could not take effect are not read beyond it, mirrored or not.
  NIVRAL_DWInitDraw(pane.handle, 64, 8, 0);
  const GuardedBuffer y(64 * 8), u(32 * 4), v(32 * 4);
  for (const uint32_t mirror : {0u, 1u}) {
    NIVRAL_DWSetMirrorMode(pane.handle, mirror);
    EXPECT_EQ(NIVRAL_DWDrawYUV420(pane.handle, y.data(), 64, u.data(), v.data(), 32, 0, 0), 1u);
  }
}

TEST(SdlPicture, ComesBackAfterMinimising) {
  Pane pane(160, 120);
  TestFrame red = Red();
  NIVRAL_DWInitDraw(pane.handle, 64, 48, 0);
  pane.DrawTwice(red);
  ShowWindow(pane.window.Handle(), SW_MINIMIZE);
  Pump(50);
  for (int i = 0; i < 10; ++i)
    pane.Draw(red);
  ShowWindow(pane.window.Handle(), SW_RESTORE);
  Pump(50);
  TestFrame blue = Blue();
  EXPECT_EQ(pane.DrawTwice(blue), 0u);
  ExpectFlat(pane.window.Handle(), kBlue);
}

struct DecodeCall {
  uint8_t* y = nullptr;
  uint32_t stride = 0, width = 0, height = 0, format = 0;
  int64_t param2 = 0;
  int count = 0;
};

void NIVRAL_CALL OnDecode(uint8_t* y, uint32_t stride, uint32_t width, uint32_t height, int64_t param2,
                          uint32_t format, void* user) {
  auto& call = *static_cast<DecodeCall*>(user);
  call = {y, stride, width, height, format, param2, call.count + 1};
}

void NIVRAL_CALL OnFrame(uint8_t*, uint32_t, uint8_t*, uint8_t*, uint32_t, uint32_t param1, int64_t,
                         void* user) {
  *static_cast<uint32_t*>(user) += param1;
}

TEST(SdlPicture, CallsBackAfterFrames) {
  Pane pane(160, 120);
  DecodeCall decode;
  uint32_t frames = 0;
  NIVRAL_DWSetDecCB(pane.handle, &decode, &OnDecode);
  NIVRAL_DWSetDrawYUV420CB(pane.handle, &frames, &OnFrame);
  TestFrame red = Red();
  pane.Draw(red);
  EXPECT_EQ(decode.count, 0) << "a frame that was dropped unseen";
  EXPECT_EQ(frames, 7u);
  NIVRAL_DWInitDraw(pane.handle, 64, 48, 0);
  pane.Draw(red, 0x123456789a);
  EXPECT_EQ(decode.count, 1);
  EXPECT_EQ(decode.y, red.y.data());
  EXPECT_EQ(decode.stride, 64u);
  EXPECT_EQ(decode.width, 64u);
  EXPECT_EQ(decode.height, 48u);
  EXPECT_EQ(decode.param2, 0x123456789a);
  EXPECT_EQ(decode.format, 3u);
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

/// Feeds one pane from a thread of its own, flat out, and redraws on exposure.
class Feeder {
 public:
  explicit Feeder(int x) : m_pane(200, 150, x, 400), m_redraw{&m_pane, &m_frame} {
    NIVRAL_DWSetFlashWndCB(m_pane.handle, &m_redraw, &OnFlash);
    NIVRAL_DWInitDraw(m_pane.handle, 64, 48, 0);
    m_thread = std::thread([this] {
      TestFrame frame = Green();
      while (!m_stop) {
        if (m_pane.Draw(frame) == 0) ++m_shown;
        Sleep(3);
      }
    });
  }
  ~Feeder() { Stop(); }

  void Stop() {
    m_stop = true;
    if (m_thread.joinable()) m_thread.join();
  }
  Pane& Get() { return m_pane; }
  int Shown() const { return m_shown; }

 private:
  Pane m_pane;
  TestFrame m_frame = Green();
  Redraw m_redraw;
  std::atomic<bool> m_stop{false};
  std::atomic<int> m_shown{0};
  std::thread m_thread;
};

void DisturbAtRandom(Feeder& feeder, std::mt19937& random) {
  HWND window = feeder.Get().window.Handle();
  switch (random() % 6) {
    case 0:
      ShowWindow(window, SW_HIDE);
      break;
    case 1:
      ShowWindow(window, SW_SHOWNOACTIVATE);
      break;
    case 2:
      NIVRAL_DWInitDraw(feeder.Get().handle, random() % 2 ? 64 : 32, 48, 0);
      break;
    default:
      feeder.Get().window.ResizeClient(static_cast<int>(100 + random() % 200),
                                       static_cast<int>(80 + random() % 150));
      NIVRAL_DWAdjustedWnd(feeder.Get().handle);
  }
}

TEST(SdlPicture, FourPanesSurviveTheirWindowsBeingResizedHiddenAndShown) {
  std::vector<std::unique_ptr<Feeder>> feeders;
  for (int i = 0; i < 4; ++i)
    feeders.push_back(std::make_unique<Feeder>(40 + i * 320));
  std::mt19937 random(20);
  const ULONGLONG end = GetTickCount64() + 10000;
  while (GetTickCount64() < end) {
    DisturbAtRandom(*feeders[random() % feeders.size()], random);
    Pump(random() % 20);
  }
  for (auto& feeder : feeders) {
    ShowWindow(feeder->Get().window.Handle(), SW_SHOWNOACTIVATE);
    NIVRAL_DWInitDraw(feeder->Get().handle, 64, 48, 0);
  }
  Pump(100);
  for (auto& feeder : feeders) {
    feeder->Stop();
    EXPECT_GT(feeder->Shown(), 0);
    TestFrame red = Red();
    EXPECT_EQ(feeder->Get().DrawTwice(red), 0u);
    ExpectFlat(feeder->Get().window.Handle(), kRed);
  }
}

}  // namespace
