// SPDX-License-Identifier: MIT
// What the player asks of the wave-out device, and in which order.
#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <vector>

#include "audio/audio.h"
#include "audio/player.h"
#include "audio/wave_out_spy.h"

namespace {

using testing::Each;
using testing::ElementsAre;

using Bytes = std::vector<uint8_t>;

TEST(Playback, OpensFeedsAndClosesTheDeviceInOrder) {
  WaveOutSpy spy;
  Player player;
  player.Start();
  ASSERT_TRUE(spy.WaitForWrites(3));
  NIVRAL_WVStopWave(player.handle);

  EXPECT_EQ(spy.deviceId, WAVE_MAPPER);
  EXPECT_EQ(spy.openFlags, static_cast<DWORD>(CALLBACK_THREAD));
  EXPECT_EQ(spy.instance, reinterpret_cast<DWORD_PTR>(player.handle));
  EXPECT_EQ(std::memcmp(&spy.format, &kPcm8k, sizeof(kPcm8k)), 0);

  auto calls = spy.Calls();
  ASSERT_GE(calls.size(), 11u);
  EXPECT_THAT(
      std::vector(calls.begin(), calls.begin() + 7),
      ElementsAre("Open", "PrepareHeader", "PrepareHeader", "Write", "Write", "PrepareHeader", "Write"));
  EXPECT_THAT(std::vector(calls.end() - 4, calls.end()),
              ElementsAre("Reset", "Close", "UnprepareHeader", "UnprepareHeader"));
  const auto writes = spy.Writes();
  EXPECT_EQ(writes[0], Bytes(kBufferBytes, 0x64));
  EXPECT_EQ(writes[1], Bytes(kBufferBytes, 0x64));
  EXPECT_EQ(writes[2], Bytes(kBufferBytes, 0x11));
}

TEST(Playback, TargetsItsOwnThread) {
  static DWORD callbackThread;
  callbackThread = 0;
  WaveOutSpy spy;
  Player player;
  NIVRAL_WVSetWriteWaveCB(player.handle, nullptr, [](uint8_t*, int size, void*) -> int {
    callbackThread = GetCurrentThreadId();
    return size;
  });
  player.Start();
  ASSERT_TRUE(spy.WaitForWrites(3));
  NIVRAL_WVStopWave(player.handle);
  EXPECT_EQ(spy.target, callbackThread);
  EXPECT_NE(callbackThread, GetCurrentThreadId());
}

TEST(Playback, ShortAnswersAreSummedFromTheBufferStart) {
  WaveOutSpy spy;
  Player player;
  player.answer = 500;
  player.Start();
  ASSERT_TRUE(spy.WaitForWrites(3));
  NIVRAL_WVStopWave(player.handle);
  EXPECT_GE(player.asked, 3);
  // Three answers of 500 at the buffer's start; the rest is what was in it before.
  const Bytes third = spy.Writes()[2];
  EXPECT_THAT(Bytes(third.begin(), third.begin() + 500), Each(0x11));
  EXPECT_THAT(Bytes(third.begin() + 500, third.end()), Each(0x64));
}

TEST(Playback, PausePlaysZerosAndResumesWithTheNextBuffer) {
  WaveOutSpy spy;
  Player player;
  player.Start();
  ASSERT_TRUE(spy.WaitForWrites(4));
  NIVRAL_WVPauseWave(player.handle, 0x80000000u);
  const size_t paused = spy.Writes().size();
  ASSERT_TRUE(spy.WaitForWrites(paused + 4));
  player.level = 0x22;
  NIVRAL_WVPauseWave(player.handle, 0);
  const size_t resumed = spy.Writes().size();
  ASSERT_TRUE(spy.WaitForWrites(resumed + 3));
  const auto writes = spy.Writes();
  // One buffer may have been on its way through the fill step at each change.
  EXPECT_EQ(writes[paused + 2], Bytes(kBufferBytes, 0));
  EXPECT_EQ(writes[paused + 3], Bytes(kBufferBytes, 0));
  EXPECT_EQ(writes[resumed + 2], Bytes(kBufferBytes, 0x22));
  // A new start is never paused.
  NIVRAL_WVPauseWave(player.handle, 1);
  NIVRAL_WVStopWave(player.handle);
  const size_t before = spy.Writes().size();
  NIVRAL_WVPlayWave(player.handle);
  ASSERT_TRUE(spy.WaitForWrites(before + 3));
  EXPECT_EQ(spy.Writes()[before + 2], Bytes(kBufferBytes, 0x22));
}

TEST(Playback, VolumeGoesStraightToAnOpenDeviceOnly) {
  WaveOutSpy spy;
  Player player;
  NIVRAL_WVSetVolume(player.handle, 50);
  player.Start();
  ASSERT_TRUE(spy.WaitForWrites(2));
  EXPECT_EQ(std::ranges::count(spy.Calls(), "SetVolume"), 0);
  NIVRAL_WVSetVolume(player.handle, 50);
  EXPECT_EQ(spy.volume, 0x7FFF7FFFu);
  // A mono device reads back its one channel.
  EXPECT_EQ(static_cast<CAudio*>(player.handle)->GetVolume() & 0xFFFF, 0x7FFF);
  NIVRAL_WVSetVolume(player.handle, 100);
  EXPECT_EQ(spy.volume, 0xFFFFFFFFu);
  NIVRAL_WVStopWave(player.handle);
  NIVRAL_WVSetVolume(player.handle, 50);
  EXPECT_EQ(std::ranges::count(spy.Calls(), "SetVolume"), 2);
  EXPECT_EQ(static_cast<CAudio*>(player.handle)->GetVolume(), 0);
}

TEST(Playback, ASecondStartIsRefusedAndTheNextOneTakesTheNewSettings) {
  WaveOutSpy spy;
  CAudio audio;
  audio.SetWaveFormat(&kPcm8k, 640);
  EXPECT_TRUE(audio.Play());
  EXPECT_FALSE(audio.Play());
  ASSERT_TRUE(spy.WaitForWrites(4));
  EXPECT_EQ(std::ranges::count(spy.Calls(), "Open"), 1);
  // Without a callback the buffers are zeroed.
  EXPECT_EQ(spy.Writes()[3], Bytes(640, 0));

  WAVEFORMATEX stereo{};
  EXPECT_TRUE(audio.SetWideBandStereoPreset(&stereo));
  EXPECT_EQ(stereo.nSamplesPerSec, 48000u);
  EXPECT_EQ(stereo.cbSize, 22);
  audio.SetWaveFormat(&stereo, 9216);
  EXPECT_EQ(spy.Writes().back().size(), 640u);
  audio.Stop();
  const size_t before = spy.Writes().size();
  EXPECT_TRUE(audio.Play());
  ASSERT_TRUE(spy.WaitForWrites(before + 3));
  EXPECT_EQ(spy.format.nSamplesPerSec, 48000u);
  EXPECT_EQ(spy.Writes()[before].size(), 9216u);
}

}  // namespace
