// SPDX-License-Identifier: MIT
// The capture path on a real recording device. The test's environment sends what this program plays to the
// sink that the recording source listens to.
#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <mutex>
#include <vector>

#include "audio/audio.h"
#include "audio/player.h"
#include "audio/wave_out_spy.h"
#include "support/import_patch.h"
#include "support/process_counts.h"

namespace {

constexpr int kCaptureBytes = 1600;
/// Far below the two seconds that a missing close notice costs, far above what closing takes.
constexpr ULONGLONG kPromptMs = 1500;

struct Watched {
  std::atomic<int> queued{0};
  std::atomic<int> queuedAfterReset{0};
  std::atomic<bool> resetSeen{false};
  std::atomic<bool> dropClose{false};
  std::atomic<int> refusedPrepares{0};
  DWORD_PTR callback = 0;
  std::mutex mutex;
  std::vector<int16_t> heard;
} g_watched;

void Keep(const WAVEHDR& header) {
  const auto* samples = reinterpret_cast<const int16_t*>(header.lpData);
  const std::lock_guard lock(g_watched.mutex);
  g_watched.heard.insert(g_watched.heard.end(), samples, samples + header.dwBytesRecorded / 2);
}

/// The client's sound: 1, 2, 3 and so on, never silent and never twice the same.
struct Ramp {
  static constexpr int16_t kLast = 32000;
  std::atomic<int16_t> next{1};

  static int NIVRAL_CALL Pull(uint8_t* buffer, int size, void* user) {
    auto& ramp = *static_cast<Ramp*>(user);
    for (int i = 0; i < size / 2; ++i) {
      const int16_t sample = ramp.next < kLast ? ramp.next++ : int16_t{0};
      std::memcpy(buffer + 2 * i, &sample, 2);
    }
    return size;
  }
};

void CALLBACK FilterClose(HWAVEIN device, UINT message, DWORD_PTR instance, DWORD_PTR a, DWORD_PTR b) {
  if (message == MM_WIM_DATA) Keep(*reinterpret_cast<WAVEHDR*>(a));
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
    g_watched.queued = g_watched.queuedAfterReset = g_watched.refusedPrepares = 0;
    g_watched.resetSeen = g_watched.dropClose = false;
    g_watched.heard.clear();
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

/// What is played is heard: the player hands over every sample once and in order, and the recording consists
/// of them. How many of them come through is up to a sound server, which on a busy machine drops some.
TEST_F(Capture, HearsInOrderWhatThePlayerHandsOver) {
  WaveOutSpy spy;
  Player player;
  Ramp ramp;
  CAudio audio;
  WAVEFORMATEX format;
  std::memset(&format, 0xFF, sizeof(format));
  ASSERT_TRUE(audio.OpenCapture(&format, kCaptureBytes));
  EXPECT_EQ(std::memcmp(&format, &kPcm8k, sizeof(format)), 0);
  NIVRAL_WVSetWriteWaveCB(player.handle, &ramp, &Ramp::Pull);
  player.Start();
  EXPECT_TRUE(WaitUntil([&] { return ramp.next == Ramp::kLast && g_watched.queued > 30; }));
  NIVRAL_WVStopWave(player.handle);
  EXPECT_LE(TimeClose(audio), kPromptMs);
  EXPECT_EQ(g_watched.queuedAfterReset, 0);

  int16_t expected = 0;
  for (const auto& write : spy.Writes()) {
    std::vector<int16_t> samples(write.size() / 2);
    std::memcpy(samples.data(), write.data(), write.size());
    if (samples[0] == 0x6464) continue;  // the device's start
    for (const int16_t sample : samples)
      ASSERT_EQ(sample, expected < Ramp::kLast - 1 ? ++expected : 0);
  }
  std::erase_if(g_watched.heard, [](int16_t sample) { return sample == 0 || sample == 0x6464; });
  EXPECT_GE(g_watched.heard.size(), 3000u);
  EXPECT_TRUE(std::ranges::is_sorted(g_watched.heard));
}

TEST_F(Capture, AMissingCloseNoticeCostsTwoSeconds) {
  CAudio audio;
  ASSERT_TRUE(Open(audio));
  Sleep(200);
  g_watched.dropClose = true;
  EXPECT_GE(TimeClose(audio), 1990u);
  EXPECT_LE(TimeClose(audio), kPromptMs);
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
  ASSERT_TRUE(WaitUntil([] { return g_watched.queued > 3; }));
  g_watched.refusedPrepares = 1;
  EXPECT_TRUE(WaitUntil([] { return g_watched.refusedPrepares == 0; }));
  const int before = g_watched.queued;
  EXPECT_TRUE(WaitUntil([before] { return g_watched.queued >= before + 3; }));
}

TEST_F(Capture, OddUseIsHarmless) {
  CAudio audio;
  for (const int32_t size : {0, -1, INT32_MIN}) {
    EXPECT_TRUE(audio.OpenCapture(nullptr, size));
    EXPECT_LE(TimeClose(audio), kPromptMs);
  }
  // Opening again closes what was open.
  ASSERT_TRUE(Open(audio));
  Sleep(150);
  ASSERT_TRUE(Open(audio));
  EXPECT_TRUE(g_watched.resetSeen);
}

TEST_F(Capture, RoundsLeaveNothingBehind) {
  ExpectRoundsKeepNothing(30, 4096, [this] {
    CAudio audio;
    EXPECT_TRUE(Open(audio));
    Sleep(20);
  });
}

}  // namespace
