// SPDX-License-Identifier: MIT
// The capture path on a real recording device: nothing exported opens it, and its samples go nowhere.
#include <gmock/gmock.h>

#include "audio/audio.h"
#include "audio/player.h"
#include "audio/wave_spy.h"

namespace {

std::atomic<int> g_rounds{0};

/// Of the rounds of 100 ms in which a device's notice that it is closed is waited for, none lasts.
void WINAPI SleepNoRound(DWORD ms) {
  if (ms == 100) ++g_rounds;
  RealFunction<decltype(Sleep)>("kernel32.dll", "Sleep")(ms == 100 ? 0 : ms);
}

TEST(Capture, BuffersGoRoundUntilTheyAreClosedAndOneThatCannotLeavesTheOther) {
  WaveSpy spy;
  CAudio audio;
  WAVEFORMATEX format;
  std::memset(&format, 0xFF, sizeof(format));
  spy.fault = [](const std::string& name, ptrdiff_t before) -> MMRESULT {
    return name == "InPrepareHeader" && before == 4 ? MMSYSERR_NOMEM : 0;
  };
  ASSERT_TRUE(audio.OpenCapture(&format, 1600));
  EXPECT_EQ(std::memcmp(&format, &kPcm8k, sizeof(format)), 0);
  EXPECT_TRUE(spy.WaitFor("InAddBuffer", 10));
  EXPECT_TRUE(audio.CloseCapture());
  const auto calls = spy.Calls();
  EXPECT_EQ(std::count(std::ranges::find(calls, "InReset"), calls.end(), "InAddBuffer"), 0);
  ASSERT_TRUE(audio.OpenCapture(nullptr, -1) && audio.OpenCapture(nullptr, 1600));
  EXPECT_EQ(spy.Count("InReset"), 2) << "what was open is closed";
}

TEST(Capture, AFailedOpenCountsAsRunningAndANoticeThatNeverComesIsWaitedForInTwentyRounds) {
  WaveSpy spy;
  spy.fault = [](const std::string& name, ptrdiff_t) -> MMRESULT {
    return name == "InOpen" ? MMSYSERR_BADDEVICEID : 0;
  };
  const ImportPatch sleep("kernel32.dll", "Sleep", &SleepNoRound);
  CAudio audio;
  EXPECT_TRUE(audio.CloseCapture());
  EXPECT_EQ(g_rounds, 0) << "never opened";
  EXPECT_FALSE(audio.OpenCapture(nullptr, 1600));
  EXPECT_TRUE(audio.CloseCapture() && audio.CloseCapture());
  EXPECT_EQ(g_rounds, 20);
}

}  // namespace
