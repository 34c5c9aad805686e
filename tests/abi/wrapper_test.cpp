// SPDX-License-Identifier: MIT
// nivral.hpp against the DLL. The wrapper comes first: it must stand alone.
#include <nivral/nivral.hpp>

#include <gtest/gtest.h>

#include <atomic>
#include <bit>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>
#include <thread>
#include <vector>

#include "support/frames.h"
#include "support/import_patch.h"
#include "support/wait.h"

namespace {

using namespace nivral;

Frame FrameOf(const TestFrame& f) {
  return {f.y.data(), static_cast<uint32_t>(f.strideY), f.u.data(), f.v.data(),
          static_cast<uint32_t>(f.strideUV)};
}

/// What was passed to the functions that stand in for the library's.
std::ostringstream g_told;

std::string Told() {
  return std::exchange(g_told, std::ostringstream()).str();
}

template <class... Arrays>
void TellColumns(int32_t count, const Arrays*... arrays) {
  const auto value = [](auto word) {
    if constexpr (sizeof(word) == sizeof(float))
      return std::bit_cast<float>(word);
    else
      return word;
  };
  for (int32_t i = 0; i < count; ++i)
    ((g_told << value(arrays[i]) << ' '), ...);
}

uint32_t NIVRAL_CALL HearBoxes(void*, int32_t count, const uint32_t* left, const uint32_t* top,
                               const uint32_t* right, const uint32_t* bottom, const uint16_t* classId,
                               const uint16_t* distance, const uint16_t* third, const uint16_t* fourth,
                               uint16_t lineWidth) {
  TellColumns(std::min(count, 12), left, top, right, bottom, classId, distance, third, fourth);
  g_told << count << ' ' << lineWidth;
  return 7;
}

uint32_t NIVRAL_CALL HearFaces(void*, int32_t pointCount, const uint32_t* x, const uint32_t* y,
                               int32_t boxCount, const uint32_t* left, const uint32_t* top,
                               const uint32_t* right, const uint32_t* bottom, uint16_t radius) {
  TellColumns(std::min(pointCount, 68), x, y);
  TellColumns(std::min(boxCount, 12), left, top, right, bottom);
  g_told << pointCount << ' ' << boxCount << ' ' << radius;
  return 0;
}

TEST(Wrapper, RecordsArriveInTheColumnsOfTheFlatInterface) {
  const ImportPatch boxes("libnivral.dll", "NIVRAL_DWSetAlgInfo", &HearBoxes);
  const ImportPatch faces("libnivral.dll", "NIVRAL_DWSetDsmAlgInfo", &HearFaces);
  Display display;
  const LabelledBox objects[13] = {{{40.5F, 60, 120, 110}, ObjectClass::kPerson, 123, 8, 9},
                                   {{200, 150.25F, 290, 210}, ObjectClass::kTruck, 45}};
  EXPECT_EQ(display.SetAssistance(objects, 2, 3).code, 7u);
  EXPECT_EQ(Told(), "40.5 60 120 110 1 123 8 9 200 150.25 290 210 4 45 0 0 2 3");
  display.SetAssistance(objects, 13, 3);
  EXPECT_TRUE(Told().ends_with(" 13 3")) << "for the library to refuse";

  const Landmark landmarks[] = {{30, 220.5F}, {60, 225}};
  const Box face{140, 30, 180, 100};
  EXPECT_TRUE(display.SetMonitoring(landmarks, 2, &face, 1, 4));
  EXPECT_EQ(Told(), "30 220.5 60 225 140 30 180 100 2 1 4");
}

/// Keeps what is registered, to be called as the library would.
struct {
  void* user;
  void* function;
} g_registered;

template <class Callback>
uint32_t NIVRAL_CALL Register(void*, void* user, Callback function) {
  g_registered = {user, reinterpret_cast<void*>(function)};
  return 0;
}

TEST(Wrapper, CallablesGetWhatTheirCallbacksAreCalledWith) {
  const ImportPatch patches[] = {
      {"libnivral.dll", "NIVRAL_DWSetDrawYUV420CB", &Register<NivralFrameCallback>},
      {"libnivral.dll", "NIVRAL_DWSetDecCB", &Register<NivralDecodeCallback>},
      {"libnivral.dll", "NIVRAL_DWSetDisplayCB", &Register<NivralDisplayCallback>},
      {"libnivral.dll", "NIVRAL_DWSetFlashWndCB", &Register<NivralFlashWndCallback>}};
  Display display;
  ASSERT_TRUE(display.Open(Backend::kSdl2));
  uint8_t y = 0, u = 0, v = 0;
  int calls = 0;
  EXPECT_TRUE(display.OnFrame([&](const Frame& f) {
    calls += f.y == &y && f.strideY == 1 && f.u == &u && f.v == &v && f.strideUV == 2 && f.param1 == 3 &&
             f.param2 == -4;
  }));
  reinterpret_cast<NivralFrameCallback>(g_registered.function)(&y, 1, &u, &v, 2, 3, -4, g_registered.user);
  EXPECT_TRUE(display.OnDecode([&](const DecodedFrame& f) {
    calls += f.y == &y && f.strideY == 1 && f.width == 2 && f.height == 3 && f.param2 == -4 && f.format == 5;
  }));
  reinterpret_cast<NivralDecodeCallback>(g_registered.function)(&y, 1, 2, 3, -4, 5, g_registered.user);
  EXPECT_TRUE(display.OnDisplay([&](const ComposedFrame& f) {
    calls += f.index == -1 && f.dc == reinterpret_cast<HDC>(&u) && f.width == 2 && f.height == 3 &&
             f.param2 == -4 && f.clientWidth == 5 && f.clientHeight == 6 && f.mirror == Mirror::kHalfTurn;
  }));
  reinterpret_cast<NivralDisplayCallback>(g_registered.function)(-1, &u, 2, 3, -4, 5, 6, 2,
                                                                 g_registered.user);
  EXPECT_TRUE(display.OnExposed([&](HWND window, int32_t width, int32_t height) {
    calls += window == reinterpret_cast<HWND>(&v) && width == 1 && height == 2;
  }));
  reinterpret_cast<NivralFlashWndCallback>(g_registered.function)(g_registered.user,
                                                                  reinterpret_cast<HWND>(&v), 1, 2);
  EXPECT_EQ(calls, 4);
}

TEST(Wrapper, WavePlayerPullsAndKeepsItsCallables) {
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
    return size = bytes;
  }));
  WavePlayer player(std::move(first));
  EXPECT_TRUE(!first && first.Play().code == 1);
  EXPECT_TRUE(player.Play());
  EXPECT_TRUE(WaitUntil([&] { return size == 800; }));
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
  constexpr size_t kJobs = 2000;
  const auto token = std::make_shared<int>(0);
  Display display;
  std::vector<size_t> ran;
  {
    JobList jobs;
    std::jthread adding([&] {
      for (size_t i = 0; i < kJobs; ++i)
        EXPECT_TRUE(jobs.Add([&, i](Display& given) { ran.push_back(&given == &display ? i : kJobs); }));
    });
    EXPECT_TRUE(WaitUntil([&] { return jobs.Run(display), ran.size() == kJobs; }));
    for (size_t i = 0; i < kJobs; ++i)
      ASSERT_EQ(ran[i], i);

    const auto count = [token](Display&) { ++*token; };
    EXPECT_TRUE(jobs.Add([&](Display&) { EXPECT_TRUE(jobs.Add(count)); }));
    jobs.Run(display);
    EXPECT_EQ(*token, 0);
    jobs.Run(display);
    EXPECT_EQ(*token, 1);
    EXPECT_TRUE(jobs.Add(count));
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
  EXPECT_FALSE(SaveBmp(path.c_str(), Frame{}, 7, 5)) << "a refused frame";

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
