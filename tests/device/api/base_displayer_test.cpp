// SPDX-License-Identifier: MIT
// What every backend inherits, seen through a backend that only records its frames.
#include "display/base_displayer.h"

#include <gmock/gmock.h>

#include <atomic>
#include <bit>
#include <cstring>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>

#include "backends/d3d9/d3d_displayer.h"
#include "backends/ddraw/direct_draw.h"
#include "backends/sdl2/sdl_displayer.h"
#include "support/frames.h"
#include "support/null_displayer.h"
#include "support/test_window.h"

namespace {

class Recorder : public NullDisplayer {
 public:
  using BaseDisplayer::m_alg;
  using BaseDisplayer::m_dsm;
  using BaseDisplayer::m_textItems;
  PixelRect Mosaic() const { return m_settings.Copy().mosaic.rect; }
};

int32_t Draw(BaseDisplayer& displayer, TestFrame& f) {
  return displayer.DrawYUV420(f.y.data(), f.strideY, f.u.data(), f.strideUV, f.v.data(), f.strideUV, 5, -6);
}

struct FrameCall {
  uint8_t* y = nullptr;
  uint8_t* u = nullptr;
  uint8_t* v = nullptr;
  uint32_t strideY = 0, strideUV = 0, param1 = 0;
  int64_t param2 = 0;
};

void NIVRAL_CALL OnFrame(uint8_t* y, uint32_t strideY, uint8_t* u, uint8_t* v, uint32_t strideUV,
                         uint32_t param1, int64_t param2, void* user) {
  *static_cast<FrameCall*>(user) = {y, u, v, strideY, strideUV, param1, param2};
}

TEST(BaseDisplayer, HandsTheClientsOwnPlanesOnWhenNothingIsActive) {
  Recorder displayer;
  displayer.InitDraw(8, 4, 0);
  TestFrame frame = GradientFrame(8, 4);
  FrameCall call;
  displayer.SetDrawYUV420CB(&call, &OnFrame);
  displayer.GetColorRecord(0).Set({200, 10, 10, 10});  // one value out of range switches all off
  displayer.GetColorRecord(1).Set({10, 10, 10, 10});
  displayer.result = 0x1234;
  EXPECT_EQ(Draw(displayer, frame), 0x1234);
  EXPECT_EQ(displayer.shown.y, frame.y.data());
  EXPECT_EQ(displayer.shown.u, frame.u.data());
  EXPECT_EQ(displayer.shown.v, frame.v.data());
  EXPECT_EQ(displayer.param1, 5u);
  EXPECT_EQ(displayer.param2, -6);
  EXPECT_EQ(call.y, frame.y.data());
  EXPECT_EQ(call.u, frame.u.data());
  EXPECT_EQ(call.v, frame.v.data());
  EXPECT_EQ(call.strideY, 8u);
  EXPECT_EQ(call.strideUV, 4u);
  EXPECT_EQ(call.param1, 5u);
  EXPECT_EQ(call.param2, -6);
}

TEST(BaseDisplayer, MirrorsACopyAndTellsTheFrameCallback) {
  Recorder displayer;
  displayer.InitDraw(4, 2, 0);
  TestFrame frame(4, 2);
  frame.y = {'a', 'b', 'c', 'd', 'e', 'f', 'g', 'h'};
  const std::vector<uint8_t> original = frame.y;
  FrameCall call;
  displayer.SetDrawYUV420CB(&call, &OnFrame);
  displayer.SetMirrorMode(2);
  Draw(displayer, frame);
  EXPECT_THAT(displayer.luma, testing::ElementsAre('h', 'g', 'f', 'e', 'd', 'c', 'b', 'a'));
  EXPECT_EQ(call.y, displayer.shown.y);
  displayer.SetMirrorMode(1);
  Draw(displayer, frame);
  EXPECT_THAT(displayer.luma, testing::ElementsAre('d', 'c', 'b', 'a', 'h', 'g', 'f', 'e'));
  displayer.SetMirrorMode(9);
  Draw(displayer, frame);
  EXPECT_EQ(displayer.luma, original);
  EXPECT_NE(displayer.shown.y, frame.y.data()) << "other modes still hand on copies";
  EXPECT_EQ(frame.y, original);
}

TEST(BaseDisplayer, CutsPlanesFromOneBuffer) {
  Recorder displayer;
  displayer.InitDraw(6, 4, 0);
  uint8_t buffer[6 * 4 * 2] = {};
  displayer.DrawYUV420Buffer(buffer, 0, 1, 2);
  EXPECT_EQ(displayer.shown.y, buffer);
  EXPECT_EQ(displayer.shown.v, buffer + 24);
  EXPECT_EQ(displayer.shown.u, buffer + 36);
}

TEST(BaseDisplayer, TwoThreadsOnOneHandleNeverShareACopy) {
  class Checker : public BaseDisplayer {
   public:
    std::atomic<int> torn{0};

   protected:
    int32_t DisplayFrame(const FrameView& f, const PaneSettings&, uint32_t luma, int64_t) override {
      for (int i = 0; i < 20; ++i) {
        for (int32_t at = 0; at < f.strideY * 32; at += 97)
          torn += f.y[at] != static_cast<uint8_t>(luma);
        SwitchToThread();
      }
      return 0;
    }
  };
  Checker displayer;
  displayer.InitDraw(64, 32, 0);
  displayer.SetMirrorMode(1);
  const auto feed = [&](uint8_t luma) {
    TestFrame f = FlatFrame(64, 32, luma, 0, 0);
    for (int i = 0; i < 200; ++i)
      displayer.DrawYUV420(f.y.data(), 64, f.u.data(), 32, f.v.data(), 32, luma, 0);
  };
  std::thread other(feed, uint8_t{10});
  feed(20);
  other.join();
  EXPECT_EQ(displayer.torn, 0);
}

template <int number>
void NIVRAL_CALL OnPaired(uint8_t*, uint32_t, uint8_t*, uint8_t*, uint32_t, uint32_t, int64_t, void* user) {
  auto& counts = *static_cast<std::pair<int, std::atomic<int>>*>(user);
  counts.second += counts.first != number;
}

TEST(BaseDisplayer, AFrameMeetsNoFunctionWithAnothersContext) {
  Recorder displayer;
  std::pair<int, std::atomic<int>> first{1, 0};
  std::pair<int, std::atomic<int>> second{2, 0};
  std::atomic<bool> stop{false};
  displayer.SetDrawYUV420CB(&first, &OnPaired<1>);
  std::thread setter([&] {
    while (!stop) {
      displayer.SetDrawYUV420CB(&second, &OnPaired<2>);
      displayer.SetDrawYUV420CB(&first, &OnPaired<1>);
    }
  });
  for (int i = 0; i < 1'000'000; ++i)
    displayer.DrawYUV420(nullptr, 0, nullptr, 0, nullptr, 0, 0, 0);
  stop = true;
  setter.join();
  EXPECT_EQ(first.second + second.second, 0);
}

TEST(BaseDisplayer, KeepsSixTextsOfAtMost511Bytes) {
  Recorder displayer;
  displayer.SetOSDText(5, std::string(600, 'x').c_str(), 1, 2, 3, 4);
  EXPECT_EQ(std::strlen(displayer.m_textItems[5].text), 511u);
  displayer.SetOSDText(5, "ab", 1, 2, 3, 4);
  EXPECT_EQ(displayer.m_textItems[5].text[300], 0) << "a shorter text leaves nothing of a longer one";
  displayer.SetOSDText(6, "no", 9, 9, 9, 9);
  displayer.SetOSDText(-1, "no", 9, 9, 9, 9);
  EXPECT_EQ(displayer.m_textItems[5].y, 2u);
}

TEST(BaseDisplayer, TheMosaicAreaIsAFractionOfTheClientArea) {
  Recorder displayer;
  displayer.SetMosaicAreaScale(0.25f, 0.5f, 0.75f, 1.0f);
  EXPECT_EQ(displayer.Mosaic(), PixelRect{}) << "no window yet";
  const TestWindow window(400, 200);
  displayer.SetPlayWnd(window.Handle());
  displayer.SetMosaicAreaScale(0.25f, 0.5f, 0.75f, 1.0f);
  EXPECT_EQ(displayer.Mosaic(), (PixelRect{200, 50, 400, 150}));
  const RECT given{1, -2, 3, 4};
  displayer.SetMosaics(&given);
  displayer.SetMosaics(nullptr);
  EXPECT_EQ(displayer.Mosaic(), (PixelRect{1, -2, 3, 4}));

  class Peek : public CDirectDraw {
   public:
    PixelRect Mosaic() const { return m_settings.Copy().mosaic.rect; }
  };
  Peek pane;
  pane.SetMosaicAreaScale(0.25f, 0.5f, 0.75f, 1.0f);
  pane.SetPlayWnd(window.Handle());
  EXPECT_EQ(pane.Mosaic(), (PixelRect{200, 50, 400, 150}));
  pane.SetMosaics(&given);
  pane.AdjustWinRect();
  EXPECT_EQ(pane.Mosaic(), (PixelRect{1, -2, 3, 4})) << "the last one to set it wins";
}

TEST(BaseDisplayer, SnapshotsNeedAName) {
  Recorder displayer;
  EXPECT_EQ(displayer.SaveFrameToFile(nullptr, nullptr, 0, nullptr, 0, nullptr, 0), 8194);
  EXPECT_EQ(displayer.SaveFrameToFile("", nullptr, 0, nullptr, 0, nullptr, 0), 8194);
  EXPECT_EQ(displayer.SaveBufferToFile("", nullptr, 0), 8194);
}

TEST(BaseDisplayer, ASnapshotIsOnDiskThoughTheResultNeverSaysSo) {
  Recorder displayer;
  displayer.InitDraw(16, 16, 0);
  TestFrame frame = FlatFrame(16, 16, 128, 128, 128);
  const char* const name = "base_displayer_snapshot.bmp";
  EXPECT_EQ(displayer.SaveFrameToFile(name, frame.y.data(), 16, frame.u.data(), 8, frame.v.data(), 8), 12287);
  std::ifstream file(name, std::ios::binary);
  const std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  file.close();
  DeleteFileA(name);
  ASSERT_EQ(bytes.size(), 822u);
  EXPECT_EQ(bytes.substr(54), std::string(768, static_cast<char>(130)));
  EXPECT_EQ(displayer.SaveFrameToFile("no such folder/x.bmp", frame.y.data(), 16, frame.u.data(), 8,
                                      frame.v.data(), 8),
            12287);
}

void QueueBox(BaseDisplayer& displayer, float left, float top, float right, float bottom) {
  const uint32_t edges[] = {std::bit_cast<uint32_t>(left), std::bit_cast<uint32_t>(top),
                            std::bit_cast<uint32_t>(right), std::bit_cast<uint32_t>(bottom)};
  const uint16_t none = 0;
  displayer.SetAlgInfo(1, &edges[0], &edges[1], &edges[2], &edges[3], &none, &none, &none, &none, 1);
}

TEST(BaseDisplayer, BurnsTheDueRecordIntoThePlanesAlsoWhilePaused) {
  Recorder displayer;
  displayer.InitDraw(64, 48, 0);
  displayer.SetPause(1);
  const auto burn = [&](TestFrame& f) {
    displayer.DrawAlgInfoOnYUV(f.y.data(), 64, f.u.data(), 32, f.v.data(), 32);
  };
  TestFrame before = FlatFrame(64, 48, 200, 128, 128);
  burn(before);
  EXPECT_EQ(before.y, FlatFrame(64, 48, 200, 128, 128).y) << "no record yet";
  QueueBox(displayer, 10, 12, 30, 40);
  QueueBox(displayer, 40, 12, 60, 40);
  TestFrame first = FlatFrame(64, 48, 200, 128, 128);
  burn(first);
  EXPECT_EQ(first.y[12 * 64 + 20], 0);
  EXPECT_EQ(first.y[12 * 64 + 50], 200);
  for (int i = 0; i < 2; ++i) {
    TestFrame second = FlatFrame(64, 48, 200, 128, 128);
    burn(second);
    EXPECT_EQ(second.y[12 * 64 + 20], 200) << i;
    EXPECT_EQ(second.y[12 * 64 + 50], 0) << "still shown when nothing newer came";
  }
}

void Queue(BaseDisplayer& displayer, float left) {
  const uint32_t edge = std::bit_cast<uint32_t>(left);
  const uint16_t value = 1;
  displayer.SetAlgInfo(1, &edge, &edge, &edge, &edge, &value, &value, &value, &value, 2);
  displayer.SetDsmAlgInfo(1, &edge, &edge, 0, nullptr, nullptr, nullptr, nullptr, 3);
}

TEST(BaseDisplayer, TakesOneRecordPerFrameInOrderAndNoneWhilePaused) {
  Recorder displayer;
  displayer.DrawOverlays();
  EXPECT_EQ(displayer.algDrawn + displayer.dsmDrawn, 0);
  Queue(displayer, 1.0f);
  Queue(displayer, 2.0f);
  Queue(displayer, 3.0f);
  displayer.DrawOverlays();
  EXPECT_EQ(displayer.algDrawn, 1);
  EXPECT_EQ(displayer.dsmDrawn, 1);
  EXPECT_EQ(displayer.m_alg.record.left[0], 1.0f);
  EXPECT_EQ(displayer.m_dsm.record.x[0], 1.0f);
  displayer.SetPause(1);
  displayer.DrawOverlays();
  EXPECT_EQ(displayer.algDrawn, 2);
  EXPECT_EQ(displayer.dsmDrawn, 2);
  EXPECT_EQ(displayer.m_alg.record.left[0], 1.0f);
  displayer.SetPause(0);
  displayer.DrawOverlays();
  displayer.DrawOverlays();
  EXPECT_EQ(displayer.m_alg.record.left[0], 3.0f);
  displayer.DrawOverlays();
  EXPECT_EQ(displayer.algDrawn, 5) << "the queue is empty and the last record still fresh";

  for (int i = 1; i <= 1000; ++i)
    Queue(displayer, static_cast<float>(i));
  displayer.DrawOverlays();
  EXPECT_EQ(displayer.m_alg.record.left[0], 745.0f) << "of records without frames the newest 256 are kept";
  EXPECT_EQ(displayer.m_dsm.record.x[0], 745.0f);
}

template <class Backend>
class RefusedFrames : public testing::Test {
 public:
  class Pane : public Backend {
   public:
    using Backend::m_algQueue;
    using Backend::m_dsmQueue;
  };
};
using Backends = testing::Types<SDLDisplayer, D3DDisplayer, CDirectDraw>;
TYPED_TEST_SUITE(RefusedFrames, Backends);

TYPED_TEST(RefusedFrames, TakeTheirRecordsWithThem) {
  typename TestFixture::Pane pane;  // without a window no backend can show anything
  TestFrame frame = FlatFrame(16, 16, 0, 0, 0);
  for (int i = 1; i <= 4; ++i) {
    Queue(pane, static_cast<float>(i));
    pane.SetPause(i == 3);
    EXPECT_NE(Draw(pane, frame), 0);
  }
  EXPECT_EQ(pane.m_algQueue.Take()->left[0], 4.0f) << "the frame that came while paused took none";
  EXPECT_EQ(pane.m_dsmQueue.Take()->x[0], 4.0f);
}

}  // namespace
