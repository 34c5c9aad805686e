// SPDX-License-Identifier: MIT
// What every backend inherits, seen through a backend that only records its frames.
#include "display/base_displayer.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstring>
#include <filesystem>
#include <string>

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

void NIVRAL_CALL NoteLuma(uint8_t* y, uint32_t, uint8_t*, uint8_t*, uint32_t, uint32_t, int64_t, void* user) {
  *static_cast<uint8_t**>(user) = y;
}

TEST(BaseDisplayer, HandsTheClientsOwnPlanesOnUnlessSomethingIsActive) {
  Recorder displayer;
  displayer.InitDraw(4, 2, 0);
  TestFrame frame(4, 2);
  frame.y = {'a', 'b', 'c', 'd', 'e', 'f', 'g', 'h'};
  uint8_t* called = nullptr;
  displayer.SetDrawYUV420CB(&called, &NoteLuma);
  displayer.GetColourRecord(0).Set({200, 10, 10, 10});  // one value out of range switches all off
  displayer.GetColourRecord(1).Set({10, 10, 10, 10});
  displayer.result = 0x1234;
  EXPECT_EQ(Draw(displayer, frame), 0x1234);
  EXPECT_TRUE(displayer.shown.y == frame.y.data() && displayer.shown.u == frame.u.data() &&
              displayer.shown.v == frame.v.data());
  EXPECT_TRUE(displayer.param1 == 5 && displayer.param2 == -6);
  for (const auto& [mode, luma] : {std::pair{2u, "hgfedcba"}, {1u, "dcbahgfe"}, {9u, "abcdefgh"}}) {
    displayer.SetMirrorMode(mode);
    Draw(displayer, frame);
    EXPECT_EQ(std::string(displayer.luma.begin(), displayer.luma.end()), luma);
    EXPECT_NE(displayer.shown.y, frame.y.data()) << "other modes hand on copies, too";
    EXPECT_EQ(called, displayer.shown.y) << "the callback gets what is shown";
  }
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

TEST(BaseDisplayer, FramesThatAreDrawnAtOnceHaveCopiesOfTheirOwn) {
  struct : Recorder {
    TestFrame other = FlatFrame(4, 2, 20, 0, 0);
    int depth = 0, torn = 0;

    int32_t DisplayFrame(const FrameView& f, const PaneSettings&, uint32_t, int64_t) override {
      const uint8_t before = f.y[0];
      if (++depth == 1) Draw(*this, other);
      torn += f.y[0] != before;
      return 0;
    }
  } displayer;
  displayer.InitDraw(4, 2, 0);
  displayer.SetMirrorMode(1);
  TestFrame frame = FlatFrame(4, 2, 10, 0, 0);
  Draw(displayer, frame);
  EXPECT_TRUE(displayer.depth == 2 && displayer.torn == 0);
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
  displayer.AdjustWinRect();
  EXPECT_EQ(displayer.Mosaic(), (PixelRect{1, -2, 3, 4})) << "the last one to set it wins";
}

TEST(BaseDisplayer, ASnapshotIsOnDiskThoughTheResultNeverSaysSo) {
  Recorder displayer;
  displayer.InitDraw(16, 16, 0);
  TestFrame frame = FlatFrame(16, 16, 128, 128, 128);
  const auto save = [&](const char* name) {
    return displayer.SaveFrameToFile(name, frame.y.data(), 16, frame.u.data(), 8, frame.v.data(), 8);
  };
  EXPECT_EQ(save(nullptr), 8194);
  EXPECT_EQ(save(""), 8194);
  EXPECT_EQ(displayer.SaveBufferToFile("", nullptr, 0), 8194);
  const char* const name = "base_displayer_snapshot.bmp";
  EXPECT_EQ(save(name), 12287);
  EXPECT_EQ(std::filesystem::file_size(name), 822u);
  DeleteFileA(name);
  EXPECT_EQ(save("no such folder/x.bmp"), 12287);
}

void Queue(BaseDisplayer& displayer, float left, float right, float top = 12, float bottom = 40) {
  const uint32_t edges[] = {std::bit_cast<uint32_t>(left), std::bit_cast<uint32_t>(top),
                            std::bit_cast<uint32_t>(right), std::bit_cast<uint32_t>(bottom)};
  const uint16_t none = 0;
  displayer.SetAlgInfo(1, &edges[0], &edges[1], &edges[2], &edges[3], &none, &none, &none, &none, 1);
  displayer.SetDsmAlgInfo(1, &edges[0], &edges[1], 0, nullptr, nullptr, nullptr, nullptr, 3);
}

TEST(BaseDisplayer, BurnsTheDueRecordIntoThePlanesAlsoWhilePaused) {
  Recorder displayer;
  displayer.InitDraw(64, 48, 0);
  displayer.SetPause(1);
  const auto burnt = [&] {
    TestFrame f = FlatFrame(64, 48, 200, 128, 128);
    displayer.DrawAlgInfoOnYUV(f.y.data(), 64, f.u.data(), 32, f.v.data(), 32);
    return std::pair<int, int>(f.y[12 * 64 + 20], f.y[12 * 64 + 50]);
  };
  EXPECT_EQ(burnt(), std::pair(200, 200)) << "no record yet";
  Queue(displayer, 10, 30);
  Queue(displayer, 40, 60);
  EXPECT_EQ(burnt(), std::pair(0, 200));
  EXPECT_EQ(burnt(), std::pair(200, 0));
  EXPECT_EQ(burnt(), std::pair(200, 0)) << "still shown when nothing newer came";
}

TEST(BaseDisplayer, KeepsTheNewest256RecordsWithoutFrames) {
  Recorder displayer;
  displayer.DrawOverlays();
  EXPECT_EQ(displayer.algDrawn + displayer.dsmDrawn, 0);
  for (int i = 1; i <= 1000; ++i)
    Queue(displayer, static_cast<float>(i), 2000);
  displayer.DrawOverlays();
  EXPECT_EQ(displayer.m_alg.record.left[0], 745.0f);
  EXPECT_EQ(displayer.m_dsm.record.x[0], 745.0f);
  displayer.SetPause(1);
  displayer.DrawOverlays();
  EXPECT_EQ(displayer.m_alg.record.left[0], 745.0f);
  EXPECT_TRUE(displayer.algDrawn == 2 && displayer.dsmDrawn == 2);
}

}  // namespace
