// SPDX-License-Identifier: MIT
// nivral.hpp against the DLL: every object as a client uses it. The wrapper comes first: it must stand alone.
#include <nivral/nivral.hpp>

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <thread>
#include <vector>

#include "support/frames.h"
#include "support/screen.h"
#include "support/test_window.h"
#include "support/wait.h"

namespace {

using namespace nivral;

constexpr int kWidth = 320;
constexpr int kHeight = 240;

class Wrapper : public testing::Test {
 protected:
  HWND Window() const { return m_window.Handle(); }

 private:
  const Library m_library{Start::kSdl2};
  TestWindow m_window{kWidth, kHeight};
};

Frame FrameOf(const TestFrame& frame, uint32_t param1 = 0, int64_t param2 = 0) {
  return {frame.y.data(), static_cast<uint32_t>(frame.strideY),  frame.u.data(),
          frame.v.data(), static_cast<uint32_t>(frame.strideUV), param1,
          param2};
}

const TestFrame kBlack = FlatFrame(kWidth, kHeight, 16, 128, 128);
const TestFrame kWhite = FlatFrame(kWidth, kHeight, 235, 128, 128);

void DrawUntilSeen(Display& display, HWND window, const TestFrame& frame, const Rgb& corner) {
  EXPECT_TRUE(display.Draw(FrameOf(frame)));
  EXPECT_TRUE(Near(WaitForPixel(window, kWidth - 1, kHeight - 1, corner, 0), corner, 0));
}

/// What a black frame looks like under the overlays that `set` sets on a new display.
template <class Set>
ScreenShot Shown(HWND window, Set set) {
  Display display;
  EXPECT_TRUE(display.Open(Backend::kSdl2));
  EXPECT_TRUE(display.SetWindow(window) && display.Init(kWidth, kHeight));
  DrawUntilSeen(display, window, kWhite, {255, 255, 255});
  set(display);
  DrawUntilSeen(display, window, kBlack, {0, 0, 0});
  return ScreenShot(ClientOnScreen(window));
}

/// The bits of a float, as the C interface takes edges.
uint32_t Word(float value) {
  uint32_t word;
  memcpy(&word, &value, sizeof(word));
  return word;
}

void SetOverlaysInC(void* pane) {
  NIVRAL_DWSetOSDText(pane, 2, "Camera 1", 10, 60, 1, 0x0000FFFF);

  const uint32_t left[] = {Word(40.5F), Word(200)}, top[] = {Word(60), Word(150.25F)};
  const uint32_t right[] = {Word(120), Word(290)}, bottom[] = {Word(110), Word(210)};
  const uint16_t classes[] = {1, 4}, distances[] = {123, 45}, zeros[] = {0, 0};
  NIVRAL_DWSetAlgInfo(pane, 2, left, top, right, bottom, classes, distances, zeros, zeros, 3);

  const uint32_t x[] = {Word(30), Word(60), Word(90)}, y[] = {Word(220), Word(225), Word(215)};
  const uint32_t face[] = {Word(140), Word(30), Word(180), Word(100)};
  NIVRAL_DWSetDsmAlgInfo(pane, 3, x, y, 1, face, face + 1, face + 2, face + 3, 4);

  // A text under the mosaic makes blocks of it, so place and level of the mosaic are seen.
  const RECT area{210, 30, 300, 80};
  NIVRAL_DWSetOSDText(pane, 0, "MMMMMM", 215, 40, 0, 0xFFFFFF);
  NIVRAL_DWSetMosaics(pane, reinterpret_cast<const uint8_t*>(&area));
  NIVRAL_DWSetMosaicLevel(pane, 2);
  NIVRAL_DWSetMosaicFlag(pane, 1);
}

void SetOverlays(Display& display) {
  EXPECT_TRUE(display.SetText(2, "Camera 1", 10, 60, 0x0000FFFF, Anchor::kBottom));

  const LabelledBox objects[] = {{{40.5F, 60, 120, 110}, ObjectClass::kPerson, 123},
                                 {{200, 150.25F, 290, 210}, ObjectClass::kTruck, 45}};
  EXPECT_TRUE(display.SetAssistance(objects, 2, 3));

  const Landmark landmarks[] = {{30, 220}, {60, 225}, {90, 215}};
  const Box face{140, 30, 180, 100};
  EXPECT_TRUE(display.SetMonitoring(landmarks, 3, &face, 1, 4));

  EXPECT_TRUE(display.SetText(1, "gone", 5, 5, 0xFFFFFF) && display.RemoveText(1));
  EXPECT_TRUE(display.SetText(0, "MMMMMM", 215, 40, 0xFFFFFF));
  EXPECT_TRUE(display.SetMosaicRect({210, 30, 300, 80}) && display.SetMosaicLevel(2) &&
              display.ShowMosaic(true));
}

/// The pixels of an area, one after the other.
std::vector<int> Pixels(const ScreenShot& shot, const RECT& area) {
  std::vector<int> pixels;
  for (int y = area.top; y < area.bottom; ++y)
    for (int x = area.left; x < area.right; ++x)
      pixels.push_back(shot.At(x, y).r << 16 | shot.At(x, y).g << 8 | shot.At(x, y).b);
  return pixels;
}

/// What the wrapper sets has to look like what the C interface sets; and each overlay has to be there.
TEST_F(Wrapper, OverlaysLookAsInC) {
  const ScreenShot wanted = Shown(Window(), [](Display& display) { SetOverlaysInC(display.Handle()); });
  const RECT text{10, 180, 90, 200}, object{39, 80, 42, 100}, landmark{26, 216, 34, 224};
  const RECT face{130, 20, 150, 40}, mosaic{210, 40, 300, 65};
  for (const RECT& overlay : {text, object, landmark, face, mosaic})
    EXPECT_NE(Pixels(wanted, overlay), std::vector<int>(Pixels(wanted, overlay).size())) << overlay.left;
  const RECT all{0, 0, kWidth, kHeight};
  EXPECT_EQ(Pixels(Shown(Window(), SetOverlays), all), Pixels(wanted, all));
}

TEST_F(Wrapper, FrameCallablesMoveWithTheirDisplayAndEndWithIt) {
  const auto token = std::make_shared<int>(0);
  Frame seen{};
  DecodedFrame decoded{};
  Display first;
  ASSERT_TRUE(first.Open());
  EXPECT_TRUE(first.OnFrame([&seen, token](const Frame& frame) { seen = frame; }));
  EXPECT_TRUE(first.OnDecode([&decoded, token](const DecodedFrame& frame) { decoded = frame; }));
  Display display(std::move(first));
  EXPECT_TRUE(!first && first.SetPause(true).code == 1 && first.OnFrame([](const Frame&) {}).code == 1);
  EXPECT_TRUE(first.Draw(FrameOf(kBlack)).code == 1 && !first.Color());

  EXPECT_TRUE(display.SetWindow(Window()) && display.Init(kWidth, kHeight));
  EXPECT_TRUE(display.Draw(FrameOf(kBlack, 7, -8)));
  EXPECT_TRUE(seen.y == kBlack.y.data() && seen.strideY == kWidth && seen.u == kBlack.u.data());
  EXPECT_TRUE(seen.v == kBlack.v.data() && seen.strideUV == kWidth / 2 && seen.param1 == 7 &&
              seen.param2 == -8);
  EXPECT_TRUE(decoded.y == kBlack.y.data() && decoded.strideY == kWidth && decoded.width == kWidth);
  EXPECT_TRUE(decoded.height == kHeight && decoded.param2 == -8 && decoded.format == 3);

  seen = {};
  EXPECT_TRUE(display.OnFrame(nullptr) && display.OnDecode([](const DecodedFrame&) {}));
  EXPECT_TRUE(display.Draw(FrameOf(kBlack)));
  EXPECT_TRUE(seen.y == nullptr && token.use_count() == 3);
  display = Display();
  EXPECT_EQ(token.use_count(), 1);
}

TEST_F(Wrapper, ExposureIsReported) {
  RECT seen{};
  Display display;
  ASSERT_TRUE(display.Open());
  EXPECT_TRUE(display.OnExposed([&](HWND exposed, int32_t width, int32_t height) {
    if (exposed == Window()) seen = {0, 0, width, height};
  }));
  EXPECT_TRUE(display.SetWindow(Window()) && display.Init(kWidth, kHeight));
  DrawUntilSeen(display, Window(), kBlack, {0, 0, 0});
  InvalidateRect(Window(), nullptr, FALSE);
  EXPECT_TRUE(WaitUntil([&] { return seen.right == kWidth && seen.bottom == kHeight; }));
}

TEST_F(Wrapper, ComposedFramesAreReported) {
  ComposedFrame seen{};
  std::atomic<bool> called{false};
  {
    Display display;
    ASSERT_TRUE(display.Open(Backend::kDirectDraw));
    EXPECT_TRUE(display.SetIndex(5) && display.SetMirror(Mirror::kFlip));
    EXPECT_TRUE(display.OnDisplay([&](const ComposedFrame& frame) {
      seen = frame;
      called = true;
    }));
    EXPECT_TRUE(display.SetWindow(Window()) && display.Init(kWidth, kHeight));
    EXPECT_TRUE(display.Draw(FrameOf(kBlack, 1, 2)));
    EXPECT_TRUE(WaitUntil([&] { return called.load(); }));
  }
  EXPECT_TRUE(seen.index == 5 && seen.dc && seen.width == kWidth && seen.height == kHeight);
  EXPECT_TRUE(seen.clientWidth == kWidth && seen.clientHeight == kHeight && seen.param2 == 2);
  EXPECT_EQ(seen.mirror, Mirror::kFlip);
}

std::array<int32_t, 4> Values(const ColorParams& params) {
  return {params.brightness, params.contrast, params.saturation, params.hue};
}

TEST_F(Wrapper, ColorIsKeptPerRecord) {
  Display display;
  ASSERT_TRUE(display.Open());
  EXPECT_TRUE(display.SetColor({1, 2, 3, 4}) && display.SetColor({-1, -2, -3, -4}, 1));
  EXPECT_EQ(Values(display.Color().value_or(ColorParams{})), (std::array{1, 2, 3, 4}));
  EXPECT_EQ(Values(display.Color(1).value_or(ColorParams{})), (std::array{-1, -2, -3, -4}));
  EXPECT_EQ(Values(Display::ColorLimits().lowest), (std::array{-127, -100, -100, -180}));
  EXPECT_EQ(Values(Display::ColorLimits().highest), (std::array{127, 100, 100, 180}));
}

TEST_F(Wrapper, WavePlayerPullsAndKeepsItsCallables) {
  const auto token = std::make_shared<int>(0);
  std::atomic<int> size{0};
  std::atomic<bool> replaced{false};
  WavePlayer first;
  EXPECT_EQ(first.Play().code, 1U);
  ASSERT_TRUE(first.Open());
  const WAVEFORMATEX format{WAVE_FORMAT_PCM, 1, 8000, 16000, 2, 16, 0};
  EXPECT_TRUE(first.SetFormat(format, 800));
  EXPECT_TRUE(first.OnWrite([&size, token](uint8_t* buffer, int bytes) {
    memset(buffer, 0, static_cast<size_t>(bytes));
    size = bytes;
    return bytes;
  }));
  WavePlayer player(std::move(first));
  EXPECT_TRUE(player.Play());
  EXPECT_TRUE(WaitUntil([&] { return size.load() == 800; }));
  EXPECT_TRUE(player.SetVolume(50));
  EXPECT_TRUE(player.OnWrite([&replaced](uint8_t*, int bytes) {
    replaced = true;
    return bytes;
  }));
  EXPECT_TRUE(WaitUntil([&] { return replaced.load(); }));
  EXPECT_EQ(token.use_count(), 2);
  EXPECT_TRUE(player.Stop());
  player.Close();
  EXPECT_TRUE(token.use_count() == 1 && player.Stop().code == 1);
}

/// A thread adds while another runs: each job runs once, in order, and one that a job adds waits its turn.
TEST(JobList, RunsEachJobOnceInOrder) {
  constexpr int kJobs = 2000;
  const auto token = std::make_shared<int>(0);
  Display display;
  std::vector<int> ran;
  {
    JobList jobs;
    std::thread adding([&] {
      for (int i = 0; i < kJobs; ++i)
        EXPECT_TRUE(jobs.Add([&ran, &display, i](Display& given) {
          EXPECT_EQ(&given, &display);
          ran.push_back(i);
        }));
    });
    EXPECT_TRUE(WaitUntil([&] {
      jobs.Run(display);
      return ran.size() == kJobs;
    }));
    adding.join();
    for (int i = 0; i < kJobs; ++i)
      ASSERT_EQ(ran[static_cast<size_t>(i)], i);

    EXPECT_TRUE(
        jobs.Add([&jobs, token](Display&) { EXPECT_TRUE(jobs.Add([token](Display&) { ++*token; })); }));
    jobs.Run(display);
    EXPECT_EQ(*token, 0);
    jobs.Run(display);
    EXPECT_EQ(*token, 1);
    EXPECT_TRUE(jobs.Add([token](Display&) { ++*token; }));
  }
  EXPECT_TRUE(*token == 1 && token.use_count() == 1);
}

/// 7 x 5 becomes 6 x 4, whose rows are padded from 18 to 20 bytes. Each row has its own grey.
TEST(Snapshot, IsABottomUpBmpOfTheEvenPart) {
  TestFrame frame = FlatFrame(7, 5, 0, 128, 128);
  for (size_t i = 0; i < frame.y.size(); ++i)
    frame.y[i] = static_cast<uint8_t>(16 + 50 * (i / 7));
  const auto path = std::filesystem::temp_directory_path() / L"nivral snapshot \u00e9.bmp";
  ASSERT_TRUE(SaveBmp(path.c_str(), FrameOf(frame), 7, 5));
  EXPECT_FALSE(SaveBmp(L"Z:\\no\\such\\folder\\x.bmp", FrameOf(frame), 7, 5));
  EXPECT_FALSE(SaveBmp(path.c_str(), FrameOf(frame), 1, 5));
  EXPECT_FALSE(SaveBmp(path.c_str(), FrameOf(frame), 0xFFFFFFFE, 0xFFFFFFFE));

  std::ifstream file(path, std::ios::binary);
  const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
  ASSERT_EQ(bytes.size(), 54U + 4 * 20);
  EXPECT_TRUE(bytes[0] == 'B' && bytes[1] == 'M' && bytes[18] == 6 && bytes[22] == 4 && bytes[28] == 24);
  std::vector<uint8_t> row(4 * 18), plane(6 * 4), chroma(3 * 2);
  ToBgr24(FrameOf(frame), 6, 4, row.data(), 6);
  for (size_t y = 0; y < 4; ++y)
    EXPECT_EQ(memcmp(bytes.data() + 54 + 20 * (3 - y), row.data() + 18 * y, 18), 0) << y;
  ToBgr24(FrameOf(frame), 6, 4, row.data(), 6, Rows::kBottomUp);
  FromBgr24(row.data(), 6, 4, plane.data(), chroma.data(), chroma.data(), 6);
  EXPECT_NEAR(plane[0], 16, 1);
  EXPECT_NEAR(plane[6 * 3], 16 + 150, 1);
  file.close();
  std::filesystem::remove(path);
}

}  // namespace
