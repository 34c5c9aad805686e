// SPDX-License-Identifier: MIT
// A machine without any sound device; the test's environment leads to no sound server.
#include <gtest/gtest.h>

#include "audio/audio.h"
#include "audio/player.h"

namespace {

TEST(NoDevice, EveryCallReturnsAndNothingHangs) {
  ASSERT_EQ(waveOutGetNumDevs(), 0u) << "this test has to run without a sound server";
  Player player;
  for (int round = 0; round < 2; ++round) {
    player.Start();
    EXPECT_EQ(NIVRAL_WVPlayWave(player.handle), 0u);
    EXPECT_EQ(NIVRAL_WVPauseWave(player.handle, 1), 0u);
    EXPECT_EQ(NIVRAL_WVPauseWave(player.handle, 0), 0u);
    EXPECT_EQ(NIVRAL_WVSetVolume(player.handle, 50), 0u);
    Sleep(100);
    EXPECT_EQ(static_cast<CAudio*>(player.handle)->GetVolume(), 0);
    EXPECT_LE(TimeStop(player.handle), kStopLimitMs);
  }
  EXPECT_EQ(player.asked, 0);
  player.Start();
}

}  // namespace
