// SPDX-License-Identifier: MIT
// SDL's starts, its event queue and its locks under calls from everywhere.
#include <SDL.h>

#include <atomic>
#include <thread>

#include "backends/sdl2/sdl_events.h"
#include "sdl_test.h"

namespace {

class SdlEvents : public SdlTest {
 protected:
  Pane pane{0, 160, 120};
  TestFrame grey = Grey();
};

TEST_F(SdlEvents, RebuildAfterALostRenderDevice) {
  pane.Start(64, 48);
  SDL_Event reset{};
  reset.type = SDL_RENDER_DEVICE_RESET;
  SDL_PushEvent(&reset);
  EXPECT_TRUE(Near(pane.Show(grey).At(80, 60), {128, 128, 128}, 2));
}

int CountIn(const std::string& text, const std::string& part) {
  int count = 0;
  for (size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
    ++count;
  return count;
}

TEST_F(SdlEvents, APaneThatOutlivesSdlIsOnlyForgotten) {
  for (int i = 0; i < 300; ++i)
    StartSdl();  // SDL alone counts starts in a byte
  pane.Start(64, 48);
  StopSdl();
  EXPECT_EQ(SDL_WasInit(0), 0u) << "one stop is enough";
  testing::internal::CaptureStdout();
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(pane.Draw(grey), 1u);
    EXPECT_EQ(pane.As<SDLDisplayer>().InitDraw(64, 48, 0), 1);
  }
  EXPECT_EQ(CountIn(testing::internal::GetCapturedStdout(), "call NIVRAL_InitializeEx(1)"), 1)
      << "named once";
  StartSdl();
  pane.Start(64, 48);
}

int CountQueued(uint32_t first, uint32_t last) {
  return SDL_PeepEvents(nullptr, 100000, SDL_PEEKEVENT, first, last);
}

template <class Member>
bool Push(uint32_t type, Member SDL_Event::*member, uint32_t windowId) {
  SDL_Event event{};
  event.type = type;
  (event.*member).windowID = windowId;
  return SDL_PushEvent(&event) == 1;
}

TEST_F(SdlEvents, LeaveNothingInAQueueThatNobodyPolls) {
  pane.Init(64, 48);
  SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
  Push(SDL_USEREVENT, &SDL_Event::user, 0);
  Push(SDL_KEYDOWN, &SDL_Event::key, 4711);
  uint32_t id = 1;
  for (SDL_Window* window = nullptr; id < 1000; ++id)
    if ((window = SDL_GetWindowFromID(id)) &&
        SDL_GetWindowData(window, kDisplayerKey) == &pane.As<SDLDisplayer>())
      break;
  ASSERT_LT(id, 1000u);
  for (int i = 0; i < 3000; ++i) {
    ASSERT_TRUE(Push(SDL_MOUSEMOTION, &SDL_Event::motion, id)) << i;
    ASSERT_TRUE(Push(SDL_FINGERMOTION, &SDL_Event::tfinger, id)) << i;
  }
  for (int size = 0; size < 3; ++size) {
    pane.Init(32 + size * 2, 48);
    pane.window.ResizeClient(150 + size, 100);
    grey = Grey(32 + size * 2);
    EXPECT_EQ(pane.Draw(grey), 0u);
  }
  EXPECT_EQ(CountQueued(0x8123, 0x8124), 0);
  EXPECT_EQ(CountQueued(SDL_RENDER_TARGETS_RESET, SDL_RENDER_DEVICE_RESET), 0);
  EXPECT_LE(CountQueued(SDL_MOUSEMOTION, SDL_MOUSEMOTION) + CountQueued(SDL_FINGERMOTION, SDL_FINGERMOTION),
            1024);
  NIVRAL_DWCloseDraw(std::exchange(pane.handle, nullptr));
  EXPECT_EQ(CountQueued(SDL_WINDOWEVENT, SDL_WINDOWEVENT), 0) << "a closed pane leaves its events behind";
  EXPECT_EQ(CountQueued(SDL_USEREVENT, SDL_USEREVENT), 1);
  EXPECT_EQ(CountQueued(SDL_KEYDOWN, SDL_KEYDOWN), 1);
}

/// Sends a message whose handler makes call `which`. Whether its answer came when the handler had ended.
bool SendCall(HWND window, WPARAM which) {
  bool ended = false;
  return SendMessageW(window, WM_APP, which, reinterpret_cast<LPARAM>(&ended)) == 42 && ended;
}

/// Sends its window messages in the middle of every frame, as graphics drivers do.
class MessagingDisplayer : public SDLDisplayer {
 public:
  using SDLDisplayer::m_algQueue;

  void DrawAlgInfo() override { wrong += SendCall(m_hPlayWnd, sent++ % 5) ? 0 : 1; }

  int32_t DrawGrey() {
    m_algQueue.Append({});  // DrawAlgInfo is called on every frame
    TestFrame frame = Grey();
    const FrameView f = frame.View();
    return DrawYUV420(f.y, f.strideY, f.u, f.strideU, f.v, f.strideV, 0, 0);
  }
  void Call(HWND window, WPARAM which) {
    if (which == 0) AdjustWinRect();
    if (which == 1) FreeDraw();
    if (which == 2) SetPlayWnd(window);
    if (which == 3) InitDraw(64, 48, 0);
    if (which == 4) DrawGrey();
  }

  std::atomic<int> wrong{0};
  std::atomic<WPARAM> sent{0};
};

MessagingDisplayer* g_called = nullptr;

LRESULT CALLBACK CallingProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != WM_APP || !g_called) return DefWindowProcW(hwnd, message, wParam, lParam);
  g_called->Call(hwnd, wParam);
  Sleep(wParam == 0 ? 1 : 0);
  *reinterpret_cast<bool*>(lParam) = true;
  return 42;
}

TEST_F(SdlTest, CallsFromHandlersOfSentMessagesNeitherHangNorAnswerThem) {
  const TestWindow window(160, 120);
  SetWindowLongPtrW(window.Handle(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&CallingProc));
  MessagingDisplayer displayer;
  g_called = &displayer;
  displayer.SetPlayWnd(window.Handle());
  displayer.InitDraw(64, 48, 0);
  EXPECT_EQ(displayer.DrawGrey(), 0);
  displayer.DrawGrey();
  EXPECT_EQ(displayer.DrawGrey(), 1) << "after FreeDraw in the middle of a frame";
  displayer.InitDraw(64, 48, 0);
  std::atomic<bool> enough{false};
  std::atomic<int> atWork{2};
  std::thread sender([&] {
    for (WPARAM i = 0; i < 150; ++i)
      displayer.wrong += SendCall(window.Handle(), i % 3 ? 0 : i / 3 % 5) ? 0 : 1;
    enough = true;
    --atWork;
  });
  // Binding and freeing belong on the window's thread; from elsewhere they must not hang either.
  std::thread feeder([&] {
    for (WPARAM i = 0; !enough || displayer.sent < 3; ++i) {
      if (displayer.DrawGrey() != 0) displayer.Call(window.Handle(), 3 - i % 2 * 2);
    }
    --atWork;
  });
  for (WPARAM i = 0; atWork > 0; ++i) {
    displayer.Call(i % 6 == 5 ? nullptr : window.Handle(), i % 6 == 5 ? 2 : i % 6);
    Pump(3);
  }
  sender.join();
  feeder.join();
  EXPECT_EQ(displayer.wrong, 0);
  EXPECT_FALSE(displayer.m_algQueue.Take()) << "a frame that got no turn left its record behind";
  g_called = nullptr;
}

}  // namespace
