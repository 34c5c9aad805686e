// SPDX-License-Identifier: MIT
// A machine without any sound device; the test's environment leads to no sound server.
#include <gtest/gtest.h>

#include "audio/audio.h"
#include "audio/direct_sound.h"
#include "audio/player.h"
#include "support/packet_queue.h"

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

TEST(NoDevice, CaptureAndDirectSoundSayThatTheyCannotStart) {
  WAVEFORMATEX format = kPcm8k;
  CAudio audio;
  EXPECT_FALSE(audio.OpenCapture(&format, 1600));
  EXPECT_TRUE(audio.CloseCapture());

  PacketQueue queue;
  CDirectSound sound;
  sound.SetFormat(format, kBufferBytes);
  EXPECT_EQ(sound.Open(GetDesktopWindow(), &queue, nullptr), 0);
  EXPECT_EQ(sound.Start(), 0);
}

}  // namespace
