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

std::atomic<int> g_rounds{0};
std::atomic<bool> g_noticeComes{true};

/// A round lasts longer than it should, so that a busy device's notice comes within one; where none will come,
/// there is nothing to wait for.
void WINAPI SleepWell(DWORD ms) {
  if (ms == 100 && (++g_rounds, !g_noticeComes)) return;
  RealFunction<decltype(Sleep)>("kernel32.dll", "Sleep")(ms == 100 ? 3000 : ms);
}

class Capture : public testing::Test {
 protected:
  static bool Open(CAudio& audio) { return audio.OpenCapture(nullptr, kCaptureBytes); }
  static int CloseInRounds(CAudio& audio) {
    g_rounds = 0;
    EXPECT_TRUE(audio.CloseCapture());
    return g_rounds;
  }

  /// From now on the device refuses a call, and no notice of its end comes.
  void Refuse(const char* call) {
    g_noticeComes = !call;
    spy.fault = [call](const std::string& name, ptrdiff_t) -> MMRESULT {
      return call && name == call ? MMSYSERR_BADDEVICEID : 0;
    };
  }

  WaveSpy spy;

 private:
  ImportPatch m_sleep{"kernel32.dll", "Sleep", &SleepWell};
};

TEST_F(Capture, BuffersGoRoundUntilTheyAreClosedAndOneThatCannotLeavesTheOther) {
  Player player;  // the source falls silent without one
  player.Start();
  CAudio audio;
  WAVEFORMATEX format;
  std::memset(&format, 0xFF, sizeof(format));
  spy.fault = [](const std::string& name, ptrdiff_t before) -> MMRESULT {
    return name == "InPrepareHeader" && before == 4 ? MMSYSERR_NOMEM : 0;
  };
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
  Refuse("InClose");
  EXPECT_EQ(CloseInRounds(audio), kCloseRounds);
  EXPECT_EQ(CloseInRounds(audio), 0);
  Refuse("InOpen");
  EXPECT_FALSE(Open(audio));
  EXPECT_EQ(CloseInRounds(audio), kCloseRounds) << "a failed open counts as running";
  Refuse(nullptr);
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

TEST_F(Capture, RoundsLeaveNothingBehind) {
  ExpectRoundsKeepNothing(30, 8192, [] {
    CAudio audio;
    EXPECT_TRUE(Open(audio));
  });
}

}  // namespace
