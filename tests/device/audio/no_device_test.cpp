// SPDX-License-Identifier: MIT
// A machine without any sound device: every call returns, and what starts says that it cannot.
#include <gmock/gmock.h>

#include "audio/audio.h"
#include "audio/direct_sound.h"
#include "audio/player.h"
#include "support/packet_queue.h"

namespace {

TEST(NoDevice, EveryCallReturnsAndTheLogSaysWhy) {
  ASSERT_EQ(waveOutGetNumDevs(), 0u) << "this test has to run without a sound server";
  Player player;
  testing::internal::CaptureStdout();
  for (int round = 0; round < 2; ++round) {
    player.Start();
    NIVRAL_WVPauseWave(player.handle, 1);
    NIVRAL_WVSetVolume(player.handle, 50);
    EXPECT_EQ(static_cast<CAudio*>(player.handle)->GetVolume(), 0);
    player.Stop();
  }
  EXPECT_THAT(testing::internal::GetCapturedStdout(), testing::HasSubstr("waveOutOpen failed, result "));
  player.Start();
  EXPECT_EQ(player.asked, 0);

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
