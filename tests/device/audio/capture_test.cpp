// SPDX-License-Identifier: MIT
// The capture path on a real recording device, whose samples go nowhere. The test's environment sends what this
// program plays to the sink that the recording source listens to.
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
} g_watched;

void CALLBACK Listen(HWAVEIN device, UINT message, DWORD_PTR instance, DWORD_PTR a, DWORD_PTR b) {
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

TEST_F(Capture, BuffersGoRoundUntilTheyAreClosed) {
  Player player;  // the source falls silent without one
  player.Start();
  CAudio audio;
  WAVEFORMATEX format;
  std::memset(&format, 0xFF, sizeof(format));
  ASSERT_TRUE(audio.OpenCapture(&format, kCaptureBytes));
  EXPECT_EQ(std::memcmp(&format, &kPcm8k, sizeof(format)), 0);
  EXPECT_TRUE(spy.WaitFor("InAddBuffer", 10));
  EXPECT_LT(CloseInRounds(audio), kCloseRounds);
  const auto calls = spy.Calls();
  EXPECT_EQ(std::count(std::ranges::find(calls, "InReset"), calls.end(), "InAddBuffer"), 0);
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
