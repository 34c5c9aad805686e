// SPDX-License-Identifier: MIT
// The capture path on a real recording device. The test's environment sends what this program plays to the
// sink that the recording source listens to.
#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <cstdio>

#include "audio/audio.h"
#include "audio/player.h"
#include "support/import_patch.h"
#include "support/process_counts.h"

namespace {

constexpr int kCaptureBytes = 1600;
constexpr uint8_t kPlayedLevel = 0x11;

struct Watched {
  std::atomic<int> queued{0};
  std::atomic<int> queuedAfterReset{0};
  std::atomic<int> withPlayedLevel{0};
  std::atomic<bool> resetSeen{false};
  std::atomic<bool> dropClose{false};
  std::atomic<int> refusedPrepares{0};
  DWORD_PTR callback = 0;
} g_watched;

bool HoldsPlayedLevel(const WAVEHDR& header) {
  const auto* bytes = reinterpret_cast<const uint8_t*>(header.lpData);
  return header.dwBytesRecorded == header.dwBufferLength &&
         std::all_of(bytes, bytes + header.dwBufferLength, [](uint8_t b) { return b == kPlayedLevel; });
}

void CALLBACK FilterClose(HWAVEIN device, UINT message, DWORD_PTR instance, DWORD_PTR a, DWORD_PTR b) {
  if (message == MM_WIM_DATA && HoldsPlayedLevel(*reinterpret_cast<WAVEHDR*>(a))) ++g_watched.withPlayedLevel;
  if (message == MM_WIM_CLOSE && g_watched.dropClose) return;
  using Procedure = void(CALLBACK*)(HWAVEIN, UINT, DWORD_PTR, DWORD_PTR, DWORD_PTR);
  reinterpret_cast<Procedure>(g_watched.callback)(device, message, instance, a, b);
}

MMRESULT WINAPI OpenFiltered(HWAVEIN* device, UINT id, const WAVEFORMATEX* format, DWORD_PTR callback,
                             DWORD_PTR instance, DWORD flags) {
  g_watched.callback = callback;
  return RealFunction<decltype(waveInOpen)>("winmm.dll", "waveInOpen")(
      device, id, format, reinterpret_cast<DWORD_PTR>(&FilterClose), instance, flags);
}

MMRESULT WINAPI OpenRefused(HWAVEIN*, UINT, const WAVEFORMATEX*, DWORD_PTR, DWORD_PTR, DWORD) {
  return MMSYSERR_BADDEVICEID;
}

MMRESULT WINAPI CountAdded(HWAVEIN device, WAVEHDR* header, UINT size) {
  ++g_watched.queued;
  if (g_watched.resetSeen) ++g_watched.queuedAfterReset;
  return RealFunction<decltype(waveInAddBuffer)>("winmm.dll", "waveInAddBuffer")(device, header, size);
}

MMRESULT WINAPI NoteReset(HWAVEIN device) {
  g_watched.resetSeen = true;
  return RealFunction<decltype(waveInReset)>("winmm.dll", "waveInReset")(device);
}

MMRESULT WINAPI RefuseSome(HWAVEIN device, WAVEHDR* header, UINT size) {
  if (g_watched.refusedPrepares > 0 && g_watched.refusedPrepares-- > 0) return MMSYSERR_NOMEM;
  return RealFunction<decltype(waveInPrepareHeader)>("winmm.dll", "waveInPrepareHeader")(device, header,
                                                                                         size);
}

class Capture : public testing::Test {
 protected:
  Capture() {
    g_watched.queued = g_watched.queuedAfterReset = g_watched.withPlayedLevel = g_watched.refusedPrepares = 0;
    g_watched.resetSeen = g_watched.dropClose = false;
  }

  bool Open(CAudio& audio) {
    WAVEFORMATEX format{};
    return audio.OpenCapture(&format, kCaptureBytes);
  }

  static ULONGLONG TimeClose(CAudio& audio) {
    const ULONGLONG start = GetTickCount64();
    EXPECT_TRUE(audio.CloseCapture());
    return GetTickCount64() - start;
  }

  ImportPatch m_open{"winmm.dll", "waveInOpen", &OpenFiltered};
  ImportPatch m_add{"winmm.dll", "waveInAddBuffer", &CountAdded};
  ImportPatch m_reset{"winmm.dll", "waveInReset", &NoteReset};
  ImportPatch m_prepare{"winmm.dll", "waveInPrepareHeader", &RefuseSome};
};

TEST_F(Capture, BuffersGoRoundWithWhatIsHeardUntilThePromptClose) {
  Player player;
  player.level = kPlayedLevel;
  player.Start();
  CAudio audio;
  WAVEFORMATEX format;
  std::memset(&format, 0xFF, sizeof(format));
  ASSERT_TRUE(audio.OpenCapture(&format, kCaptureBytes));
  EXPECT_EQ(std::memcmp(&format, &kPcm8k, sizeof(format)), 0);
  Sleep(3000);
  // A buffer holds 100 ms; the source needs a moment to start.
  EXPECT_GE(g_watched.queued, 22);
  EXPECT_LE(g_watched.queued, 34);
  EXPECT_GE(g_watched.withPlayedLevel, 10);
  EXPECT_LE(TimeClose(audio), 100u);
  EXPECT_EQ(g_watched.queuedAfterReset, 0);
  EXPECT_LE(TimeClose(audio), 1u);
}

TEST_F(Capture, NeverOpenedClosesAtOnce) {
  CAudio audio;
  EXPECT_LE(TimeClose(audio), 1u);
}

TEST_F(Capture, AMissingCloseNoticeCostsTwoSeconds) {
  CAudio audio;
  ASSERT_TRUE(Open(audio));
  Sleep(200);
  g_watched.dropClose = true;
  const ULONGLONG took = TimeClose(audio);
  EXPECT_GE(took, 1990u);
  EXPECT_LE(took, 2300u);
  EXPECT_LE(TimeClose(audio), 1u);
}

TEST_F(Capture, AFailedOpenLeavesTheStateRunningWithoutADevice) {
  CAudio audio;
  WAVEFORMATEX format{};
  {
    ImportPatch refuse("winmm.dll", "waveInOpen", &OpenRefused);
    EXPECT_FALSE(audio.OpenCapture(&format, kCaptureBytes));
  }
  EXPECT_EQ(format.nSamplesPerSec, 8000u);
  EXPECT_EQ(g_watched.queued, 0);
  EXPECT_GE(TimeClose(audio), 1990u);
  EXPECT_TRUE(Open(audio));
  EXPECT_EQ(g_watched.queued, 2);
}

TEST_F(Capture, ABufferThatCannotBeRecycledLeavesTheOther) {
  Player player;  // the source falls silent without one
  player.Start();
  CAudio audio;
  ASSERT_TRUE(Open(audio));
  Sleep(500);
  g_watched.refusedPrepares = 1;
  Sleep(300);
  EXPECT_EQ(g_watched.refusedPrepares, 0);
  const int before = g_watched.queued;
  Sleep(500);
  EXPECT_GE(g_watched.queued, before + 3);
}

TEST_F(Capture, OddUseIsHarmless) {
  CAudio audio;
  for (const int32_t size : {0, -1, INT32_MIN}) {
    EXPECT_TRUE(audio.OpenCapture(nullptr, size));
    EXPECT_LE(TimeClose(audio), 100u);
  }
  // Opening again closes what was open.
  ASSERT_TRUE(Open(audio));
  Sleep(150);
  ASSERT_TRUE(Open(audio));
  EXPECT_TRUE(g_watched.resetSeen);
}

TEST_F(Capture, RoundsLeaveNothingBehind) {
  const auto round = [this] {
    CAudio audio;
    EXPECT_TRUE(Open(audio));
    Sleep(20);
  };
  for (int i = 0; i < 5; ++i)
    round();
  const ProcessCounts before = CountSettledProcess();
  for (int i = 0; i < 30; ++i)
    round();
  const ProcessCounts after = CountSettledProcess();
  ExpectNoGrowth(before, after, 4096);
  std::printf("30 rounds: %s -> %s\n", testing::PrintToString(before).c_str(),
              testing::PrintToString(after).c_str());
}

}  // namespace
