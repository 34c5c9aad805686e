// SPDX-License-Identifier: MIT
// The capture path on a real recording device. The test's environment sends what this program plays to the
// sink that the recording source listens to.
#include <gmock/gmock.h>

#include "audio/audio.h"
#include "audio/player.h"
#include "audio/wave_spy.h"
#include "support/process_counts.h"

namespace {

constexpr int kCaptureBytes = 1600;
constexpr int kCloseRounds = 20;  ///< in which the device's notice that it is closed is waited for

struct Watched {
  bool refuseOpen = false;
  std::atomic<bool> dropClose{false};
  std::atomic<int> rounds{0};
  DWORD_PTR callback = 0;
  std::vector<int16_t> heard;
} g_watched;

void CALLBACK Listen(HWAVEIN device, UINT message, DWORD_PTR instance, DWORD_PTR a, DWORD_PTR b) {
  if (message == MM_WIM_DATA) {
    const auto& header = *reinterpret_cast<const WAVEHDR*>(a);
    const auto* samples = reinterpret_cast<const int16_t*>(header.lpData);
    g_watched.heard.insert(g_watched.heard.end(), samples, samples + header.dwBytesRecorded / 2);
  }
  if (message == MM_WIM_CLOSE && g_watched.dropClose) return;
  using Procedure = void(CALLBACK*)(HWAVEIN, UINT, DWORD_PTR, DWORD_PTR, DWORD_PTR);
  reinterpret_cast<Procedure>(g_watched.callback)(device, message, instance, a, b);
}

MMRESULT WINAPI OpenListening(HWAVEIN* device, UINT id, const WAVEFORMATEX* format, DWORD_PTR callback,
                              DWORD_PTR instance, DWORD flags) {
  if (g_watched.refuseOpen) return MMSYSERR_BADDEVICEID;
  g_watched.callback = callback;
  return RealFunction<decltype(waveInOpen)>("winmm.dll", "waveInOpen")(
      device, id, format, reinterpret_cast<DWORD_PTR>(&Listen), instance, flags);
}

/// A round lasts longer than it should, so that a busy device's notice comes within one; without a device, or when the
/// notice is dropped, there is nothing to wait for.
void WINAPI SleepWell(DWORD ms) {
  if (ms == 100 && (++g_watched.rounds, g_watched.dropClose || g_watched.refuseOpen)) return;
  RealFunction<decltype(Sleep)>("kernel32.dll", "Sleep")(ms == 100 ? 3000 : ms);
}

class Capture : public testing::Test {
 protected:
  Capture() { g_watched.dropClose = g_watched.refuseOpen = false; }

  static bool Open(CAudio& audio) { return audio.OpenCapture(nullptr, kCaptureBytes); }
  static int CloseInRounds(CAudio& audio) {
    g_watched.rounds = 0;
    EXPECT_TRUE(audio.CloseCapture());
    return g_watched.rounds;
  }

  WaveSpy spy;

 private:
  ImportPatch m_open{"winmm.dll", "waveInOpen", &OpenListening};
  ImportPatch m_sleep{"kernel32.dll", "Sleep", &SleepWell};
};

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

/// What is played is heard: the player hands over every sample once and in order, and the recording consists
/// of them. How many of them come through is up to a sound server, which on a busy machine drops some.
TEST_F(Capture, HearsInOrderWhatThePlayerHandsOver) {
  Ramp ramp;
  Player player;
  CAudio audio;
  WAVEFORMATEX format;
  std::memset(&format, 0xFF, sizeof(format));
  g_watched.heard.clear();
  ASSERT_TRUE(audio.OpenCapture(&format, kCaptureBytes));
  EXPECT_EQ(std::memcmp(&format, &kPcm8k, sizeof(format)), 0);
  NIVRAL_WVSetWriteWaveCB(player.handle, &ramp, &Ramp::Pull);
  player.Start();
  EXPECT_TRUE(WaitUntil([&] { return ramp.next == Ramp::kLast; }) && spy.WaitFor("InAddBuffer", 30));
  player.Stop();
  EXPECT_LT(CloseInRounds(audio), kCloseRounds);
  const auto calls = spy.Calls();
  EXPECT_EQ(std::count(std::ranges::find(calls, "InReset"), calls.end(), "InAddBuffer"), 0);

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

TEST_F(Capture, ClosingWaitsForTheNoticeOfWhatWasOpenedAndNoLongerThanTwoSeconds) {
  CAudio audio;
  EXPECT_EQ(CloseInRounds(audio), 0) << "never opened";
  ASSERT_TRUE(Open(audio));
  g_watched.dropClose = true;
  EXPECT_EQ(CloseInRounds(audio), kCloseRounds);
  EXPECT_EQ(CloseInRounds(audio), 0);
  g_watched.refuseOpen = true;
  EXPECT_FALSE(Open(audio));
  EXPECT_EQ(CloseInRounds(audio), kCloseRounds) << "a failed open counts as running";
  g_watched.dropClose = g_watched.refuseOpen = false;
  EXPECT_EQ(spy.Count("InAddBuffer"), 2);
  for (const int32_t size : {0, -1, INT32_MIN}) {
    EXPECT_TRUE(audio.OpenCapture(nullptr, size));
    EXPECT_LT(CloseInRounds(audio), kCloseRounds);
  }
  ASSERT_TRUE(Open(audio));
  const auto resets = spy.Count("InReset");
  ASSERT_TRUE(Open(audio));
  EXPECT_EQ(spy.Count("InReset"), resets + 1) << "what was open is closed";
}

TEST_F(Capture, ABufferThatCannotBeRecycledLeavesTheOther) {
  Player player;  // the source falls silent without one
  player.Start();
  CAudio audio;
  spy.fault = [](const std::string& name, ptrdiff_t before) -> MMRESULT {
    return name == "InPrepareHeader" && before == 4 ? MMSYSERR_NOMEM : 0;
  };
  ASSERT_TRUE(Open(audio));
  EXPECT_TRUE(spy.WaitFor("InPrepareHeader", 8));
  EXPECT_TRUE(spy.WaitFor("InAddBuffer", 7));
}

TEST_F(Capture, RoundsLeaveNothingBehind) {
  ExpectRoundsKeepNothing(30, 8192, [] {
    CAudio audio;
    EXPECT_TRUE(Open(audio));
  });
}

}  // namespace
