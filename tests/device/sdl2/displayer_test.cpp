// SPDX-License-Identifier: MIT
// What only shows behind the exports: results of single operations, SDL's event queue, device resets.
#include <SDL.h>
#include <gmock/gmock.h>

#include <atomic>
#include <memory>
#include <string>
#include <thread>

#include "backends/sdl2/sdl_displayer.h"
#include "backends/sdl2/sdl_events.h"
#include "backends/sdl2/sdl_library.h"
#include "support/frames.h"
#include "support/screen.h"
#include "support/test_window.h"

namespace {

/// What the log says on the standard output from now on.
class LogEcho {
 public:
  LogEcho() {
    CreatePipe(&m_read, &m_write, nullptr, 65536);
    SetStdHandle(STD_OUTPUT_HANDLE, m_write);
  }

  /// Once; ends the listening.
  int Count(const std::string& text) {
    SetStdHandle(STD_OUTPUT_HANDLE, m_before);
    CloseHandle(m_write);
    std::string all(65536, '\0');
    DWORD bytes = 0;
    ReadFile(m_read, all.data(), static_cast<DWORD>(all.size()), &bytes, nullptr);
    CloseHandle(m_read);
    int count = 0;
    for (size_t at = all.find(text); at != std::string::npos; at = all.find(text, at + 1))
      ++count;
    return count;
  }

 private:
  HANDLE m_before = GetStdHandle(STD_OUTPUT_HANDLE);
  HANDLE m_read = nullptr;
  HANDLE m_write = nullptr;
};

class SdlDisplayerTest : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    for (int i = 0; i < 300; ++i)
      StartSdl();  // SDL alone counts starts in a byte
  }
  static void TearDownTestSuite() {
    StopSdl();
    EXPECT_EQ(SDL_WasInit(0), 0u) << "one stop is enough";
  }

  SdlDisplayerTest() { m_displayer->SetPlayWnd(m_window.Handle()); }

  int32_t Draw() {
    const FrameView f = m_frame.View();
    return m_displayer->DrawYUV420(f.y, f.strideY, f.u, f.strideU, f.v, f.strideV, 0, 0);
  }

  uint32_t PaneWindowId() const {
    for (uint32_t id = 1; id < 1000; ++id) {
      SDL_Window* window = SDL_GetWindowFromID(id);
      if (window && SDL_GetWindowData(window, kDisplayerKey) == m_displayer.get()) return id;
    }
    return 0;
  }

  TestWindow m_window{160, 120};
  std::unique_ptr<SDLDisplayer> m_displayer = std::make_unique<SDLDisplayer>();
  TestFrame m_frame = FlatFrame(64, 48, 126, 128, 128);
};

TEST_F(SdlDisplayerTest, InitDrawReportsOnlyNewSizesAsDone) {
  EXPECT_EQ(m_displayer->InitDraw(64, 48, 0), 0);
  EXPECT_EQ(m_displayer->InitDraw(64, 48, 0), 1);
  EXPECT_EQ(m_displayer->InitDraw(0, 48, 0), 1);
  EXPECT_EQ(Draw(), 0) << "the texture was kept";
  EXPECT_EQ(m_displayer->InitDraw(32, 48, 0), 0);
  EXPECT_EQ(m_displayer->FreeDraw(), 0);
  EXPECT_EQ(m_displayer->FreeDraw(), 1) << "nothing left to free";
}

TEST_F(SdlDisplayerTest, WithoutAWindowNothingBinds) {
  m_window.Destroy();
  EXPECT_EQ(m_displayer->InitDraw(64, 48, 0), 1);
  SDLDisplayer unbound;
  EXPECT_EQ(unbound.InitDraw(64, 48, 0), 1);
  unbound.AdjustWinRect();
}

TEST_F(SdlDisplayerTest, TearsDownAfterTheWindowIsGone) {
  m_displayer->InitDraw(64, 48, 0);
  m_window.Destroy();
  EXPECT_EQ(m_displayer->FreeDraw(), 0);
}

TEST_F(SdlDisplayerTest, TheWindowIsTaggedAsLongAsThePaneUsesIt) {
  EXPECT_EQ(GetPropA(m_window.Handle(), "sdl2-display"), m_displayer.get());
  const TestWindow other(100, 100, 400, 60);
  m_displayer->SetPlayWnd(other.Handle());
  EXPECT_EQ(GetPropA(m_window.Handle(), "sdl2-display"), nullptr);
  m_displayer.reset();
  EXPECT_EQ(GetPropA(other.Handle(), "sdl2-display"), nullptr);
}

TEST_F(SdlDisplayerTest, RebuildsAfterALostRenderDevice) {
  m_displayer->InitDraw(64, 48, 0);
  EXPECT_EQ(Draw(), 0);
  SDL_Event reset{};
  reset.type = SDL_RENDER_DEVICE_RESET;
  SDL_PushEvent(&reset);
  EXPECT_EQ(Draw(), 0);
  EXPECT_PIXEL(m_window.Handle(), 80, 60, {128, 128, 128});
}

TEST_F(SdlDisplayerTest, APaneThatOutlivesSdlIsOnlyForgotten) {
  m_displayer->InitDraw(64, 48, 0);
  EXPECT_EQ(Draw(), 0);
  StopSdl();
  LogEcho said;
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(Draw(), 1);
    EXPECT_EQ(m_displayer->InitDraw(64, 48, 0), 1);
  }
  EXPECT_EQ(said.Count("call NIVRAL_InitializeEx(1)"), 1) << "named once, not every time";
  StartSdl();
  EXPECT_EQ(m_displayer->InitDraw(64, 48, 0), 0);
  EXPECT_EQ(Draw(), 0);
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
    TestFrame frame = FlatFrame(64, 48, 126, 128, 128);
    const FrameView f = frame.View();
    return DrawYUV420(f.y, f.strideY, f.u, f.strideU, f.v, f.strideV, 0, 0);
  }

  std::atomic<int> wrong{0};
  std::atomic<WPARAM> sent{0};
};

void Call(MessagingDisplayer& displayer, HWND window, WPARAM which) {
  if (which == 0) displayer.AdjustWinRect();
  if (which == 1) displayer.FreeDraw();
  if (which == 2) displayer.SetPlayWnd(window);
  if (which == 3) displayer.InitDraw(64, 48, 0);
  if (which == 4) displayer.DrawGrey();
}

MessagingDisplayer* g_called = nullptr;

LRESULT CALLBACK CallingProc(HWND hwnd, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message != WM_APP || !g_called) return DefWindowProcW(hwnd, message, wParam, lParam);
  Call(*g_called, hwnd, wParam);
  Sleep(wParam == 0 ? 1 : 0);
  *reinterpret_cast<bool*>(lParam) = true;
  return 42;
}

TEST_F(SdlDisplayerTest, CallsFromHandlersOfSentMessagesNeitherHangNorAnswerThem) {
  m_displayer.reset();
  SetWindowLongPtrW(m_window.Handle(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&CallingProc));
  MessagingDisplayer displayer;
  g_called = &displayer;
  displayer.SetPlayWnd(m_window.Handle());
  displayer.InitDraw(64, 48, 0);
  std::atomic<bool> enough{false};
  std::atomic<int> atWork{2};
  std::thread sender([&] {
    for (WPARAM i = 0; i < 300; ++i)
      displayer.wrong += SendCall(m_window.Handle(), i % 3 ? 0 : i / 3 % 5) ? 0 : 1;
    enough = true;
    --atWork;
  });
  // Binding and freeing belong on the window's thread; from elsewhere they must not hang either.
  std::thread feeder([&] {
    for (WPARAM i = 0; !enough || displayer.sent < 3; ++i) {
      if (displayer.DrawGrey() != 0) Call(displayer, m_window.Handle(), 3 - i % 2 * 2);
    }
    --atWork;
  });
  for (WPARAM i = 0; atWork > 0; ++i) {
    Call(displayer, i % 6 == 5 ? nullptr : m_window.Handle(), i % 6 == 5 ? 2 : i % 6);
    Pump(3);
  }
  sender.join();
  feeder.join();
  EXPECT_EQ(displayer.wrong, 0);
  EXPECT_FALSE(displayer.m_algQueue.Take()) << "a frame that got no turn left its record behind";
  g_called = nullptr;
}

int CountQueued(uint32_t first, uint32_t last) {
  return SDL_PeepEvents(nullptr, 100000, SDL_PEEKEVENT, first, last);
}

TEST_F(SdlDisplayerTest, LeavesNothingInAQueueThatNobodyPolls) {
  m_displayer->InitDraw(64, 48, 0);
  SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
  SDL_Event foreign{};
  foreign.type = SDL_USEREVENT;
  SDL_PushEvent(&foreign);
  SDL_Event elsewhere{};
  elsewhere.type = SDL_KEYDOWN;
  elsewhere.key.windowID = 4711;
  SDL_PushEvent(&elsewhere);

  const uint32_t id = PaneWindowId();
  ASSERT_NE(id, 0u);
  for (int i = 0; i < 3000; ++i) {
    SDL_Event motion{};
    motion.type = SDL_MOUSEMOTION;
    motion.motion.windowID = id;
    ASSERT_EQ(SDL_PushEvent(&motion), 1) << i;
    SDL_Event finger{};
    finger.type = SDL_FINGERMOTION;
    finger.tfinger.windowID = id;
    ASSERT_EQ(SDL_PushEvent(&finger), 1) << i;
  }
  for (uint32_t size = 0; size < 6; ++size) {
    EXPECT_EQ(m_displayer->InitDraw(32 + size * 2, 48, 0), 0);
    m_window.ResizeClient(static_cast<int>(150 + size), 100);
    m_frame = FlatFrame(static_cast<int>(32 + size * 2), 48, 126, 128, 128);
    EXPECT_EQ(Draw(), 0);
  }
  EXPECT_EQ(CountQueued(0x8123, 0x8124), 0);
  EXPECT_EQ(CountQueued(SDL_RENDER_TARGETS_RESET, SDL_RENDER_DEVICE_RESET), 0);
  EXPECT_LE(CountQueued(SDL_MOUSEMOTION, SDL_MOUSEMOTION) + CountQueued(SDL_FINGERMOTION, SDL_FINGERMOTION),
            1024);
  m_displayer.reset();
  EXPECT_EQ(CountQueued(SDL_WINDOWEVENT, SDL_WINDOWEVENT), 0) << "a closed pane leaves its events behind";
  EXPECT_EQ(CountQueued(SDL_USEREVENT, SDL_USEREVENT), 1);
  EXPECT_EQ(CountQueued(SDL_KEYDOWN, SDL_KEYDOWN), 1);
}

TEST_F(SdlDisplayerTest, TheMosaicAreaFollowsTheWindow) {
  class Peek : public SDLDisplayer {
   public:
    PixelRect Mosaic() const { return m_settings.Copy().mosaic.rect; }
  };
  Peek displayer;
  displayer.SetPlayWnd(m_window.Handle());
  displayer.SetMosaicAreaScale(0.25f, 0.5f, 0.75f, 1.0f);
  EXPECT_EQ(displayer.Mosaic(), (PixelRect{80, 30, 160, 90}));
  m_window.ResizeClient(400, 200);
  displayer.AdjustWinRect();
  EXPECT_EQ(displayer.Mosaic(), (PixelRect{200, 50, 400, 150}));
}

}  // namespace
