// SPDX-License-Identifier: MIT
// What the player asks of the wave-out device, and in which order; faults of the device; what is left behind.
#include <gmock/gmock.h>

#include <new>
#include <thread>

#include "audio/audio.h"
#include "audio/player.h"
#include "audio/wave_spy.h"
#include "support/failing_memory.h"
#include "support/process_counts.h"

namespace {

using testing::ElementsAre;

using Bytes = std::vector<uint8_t>;

TEST(Playback, OpensFeedsAndClosesTheDeviceInOrderForItsOwnThread) {
  WaveSpy spy;
  Player player;
  player.Start();
  ASSERT_TRUE(spy.WaitForWrites(3));
  player.Stop();
  EXPECT_EQ(spy.opened.id, WAVE_MAPPER);
  EXPECT_EQ(spy.opened.flags, static_cast<DWORD>(CALLBACK_THREAD));
  EXPECT_EQ(spy.opened.instance, reinterpret_cast<DWORD_PTR>(player.handle));
  EXPECT_EQ(spy.opened.target, player.thread);
  EXPECT_EQ(std::memcmp(&spy.opened.format, &kPcm8k, sizeof(kPcm8k)), 0);
  const auto calls = spy.Calls();
  ASSERT_GE(calls.size(), 11u);
  EXPECT_THAT(std::vector(calls.begin(), calls.begin() + 7),
              ElementsAre("OutOpen", "OutPrepareHeader", "OutPrepareHeader", "OutWrite", "OutWrite",
                          "OutPrepareHeader", "OutWrite"));
  EXPECT_THAT(std::vector(calls.end() - 4, calls.end()),
              ElementsAre("OutReset", "OutClose", "OutUnprepareHeader", "OutUnprepareHeader"));
  EXPECT_EQ(spy.Writes()[0], Bytes(kBufferBytes, 0x64));
  EXPECT_EQ(spy.Writes()[1], Bytes(kBufferBytes, 0x64));
  EXPECT_EQ(spy.Writes()[2], Bytes(kBufferBytes, 0x11));
}

/// The client's sound: 1, 2, 3 and so on, never silent and never twice the same.
int NIVRAL_CALL PullRamp(uint8_t* buffer, int size, void* next) {
  for (int i = 0; i < size; i += 2) {
    const int16_t sample = (*static_cast<std::atomic<int16_t>*>(next))++;
    std::memcpy(buffer + i, &sample, 2);
  }
  return size;
}

TEST(Playback, HandsOverEverySampleOnceAndInOrder) {
  WaveSpy spy;
  Player player;
  std::atomic<int16_t> next{1};
  NIVRAL_WVSetWriteWaveCB(player.handle, &next, &PullRamp);
  player.Start(kPcm8k, 320);
  ASSERT_TRUE(spy.WaitForWrites(50));
  player.Stop();
  const auto writes = spy.Writes();
  for (size_t i = 2, expected = 0; i < writes.size(); ++i)
    for (size_t at = 0; at < 320; at += 2)
      ASSERT_EQ(writes[i][at] | writes[i][at + 1] << 8, ++expected);
}

TEST(Playback, PausePlaysZerosUntilItEndsOrPlayingStartsAnew) {
  WaveSpy spy;
  Player player;
  player.Start();
  // One buffer may be on its way through the fill step at each change.
  const auto playsSoon = [&](uint8_t level) {
    const size_t now = spy.Writes().size();
    return spy.WaitForWrites(now + 4) && spy.Writes()[now + 2] == Bytes(kBufferBytes, level) &&
           spy.Writes()[now + 3] == Bytes(kBufferBytes, level);
  };
  EXPECT_TRUE(playsSoon(0x11));
  NIVRAL_WVPauseWave(player.handle, 0x80000000u);
  EXPECT_TRUE(playsSoon(0));
  player.level = 0x22;
  NIVRAL_WVPauseWave(player.handle, 0);
  EXPECT_TRUE(playsSoon(0x22));
  NIVRAL_WVPauseWave(player.handle, 1);
  player.Stop();
  NIVRAL_WVPlayWave(player.handle);
  EXPECT_TRUE(playsSoon(0x22));
}

TEST(Playback, VolumeGoesStraightToAnOpenDeviceOnly) {
  WaveSpy spy;
  Player player;
  auto& audio = *static_cast<CAudio*>(player.handle);
  NIVRAL_WVSetVolume(player.handle, 50);
  player.Start();
  ASSERT_TRUE(spy.WaitForWrites(2));
  EXPECT_EQ(spy.Count("OutSetVolume"), 0);
  NIVRAL_WVSetVolume(player.handle, 50);
  EXPECT_EQ(spy.volume, 0x7FFF7FFFu);
  EXPECT_EQ(audio.GetVolume() & 0xFFFF, 0x7FFF) << "a mono device reads back its one channel";
  player.Stop();
  NIVRAL_WVSetVolume(player.handle, 50);
  EXPECT_EQ(spy.Count("OutSetVolume"), 1);
  EXPECT_EQ(audio.GetVolume(), 0);
}

TEST(Playback, ASecondStartIsRefusedAndTheNextOneTakesTheNewSettings) {
  WaveSpy spy;
  CAudio audio;
  audio.SetWaveFormat(&kPcm8k, 640);
  EXPECT_TRUE(audio.Play());
  EXPECT_FALSE(audio.Play());
  ASSERT_TRUE(spy.WaitForWrites(4));
  EXPECT_EQ(spy.Count("OutOpen"), 1);
  EXPECT_EQ(spy.Writes()[3], Bytes(640, 0)) << "without a callback";

  WAVEFORMATEX stereo{};
  EXPECT_TRUE(audio.SetWideBandStereoPreset(&stereo));
  EXPECT_TRUE(stereo.nSamplesPerSec == 48000 && stereo.cbSize == 22);
  audio.SetWaveFormat(&stereo, 9216);
  EXPECT_EQ(spy.Writes().back().size(), 640u);
  audio.Stop();
  const size_t before = spy.Writes().size();
  EXPECT_TRUE(audio.Play());
  ASSERT_TRUE(spy.WaitForWrites(before + 3));
  EXPECT_EQ(spy.opened.format.nSamplesPerSec, 48000u);
  EXPECT_EQ(spy.Writes()[before].size(), 9216u);
}

TEST(PlaybackFaults, AnInvalidHandleWhilePreparingIsSteppedOver) {
  WaveSpy spy;
  spy.fault = [](const std::string& name, ptrdiff_t before) -> MMRESULT {
    return name == "OutPrepareHeader" && before == 0 ? MMSYSERR_INVALHANDLE : 0;
  };
  Player player;
  player.Start();
  ASSERT_TRUE(spy.WaitForWrites(4));
  EXPECT_EQ(spy.Calls()[3], "OutWrite");
  EXPECT_EQ(spy.Count("OutClose"), 0);
}

TEST(PlaybackFaults, AnyOtherFailureWhilePreparingClosesAndAllowsANewStart) {
  for (const int header : {0, 1}) {
    WaveSpy spy;
    spy.fault = [header](const std::string& name, ptrdiff_t before) -> MMRESULT {
      // The next start comes while the refused device is still being closed.
      if (name == "OutUnprepareHeader" && before == 0) Sleep(200);
      return name == "OutPrepareHeader" && before == header ? MMSYSERR_NOMEM : 0;
    };
    Player player;
    player.Start();
    ASSERT_TRUE(spy.WaitFor("OutUnprepareHeader"));
    EXPECT_EQ(spy.Count("OutWrite"), 0);
    // The thread ended by itself; nothing needs stopping before the next start.
    WaitUntil([&] { return NIVRAL_WVPlayWave(player.handle) == 0 && !spy.Writes().empty(); });
    EXPECT_TRUE(spy.WaitForWrites(3));
    EXPECT_EQ(spy.Count("OutOpen"), 2);
    NIVRAL_WVSetVolume(player.handle, 100);
    EXPECT_EQ(spy.Count("OutSetVolume"), 1);
  }
}

bool g_noThread = false;

HANDLE WINAPI MakeThreadLateOrNever(SECURITY_ATTRIBUTES* security, SIZE_T stack, LPTHREAD_START_ROUTINE body,
                                    void* argument, DWORD flags, DWORD* id) {
  if (g_noThread) return nullptr;
  const HANDLE thread = RealFunction<decltype(CreateThread)>("kernel32.dll", "CreateThread")(
      security, stack, body, argument, flags, id);
  Sleep(100);
  return thread;
}

TEST(PlaybackFaults, AThreadThatComesLateKnowsItsHandleAndOneThatNeverComesIsTriedAgain) {
  WaveSpy spy;
  CAudio audio;
  audio.SetWaveFormat(&kPcm8k, kBufferBytes);
  const ImportPatch patch("kernel32.dll", "CreateThread", &MakeThreadLateOrNever);
  g_noThread = true;
  EXPECT_FALSE(audio.Play());
  EXPECT_FALSE(audio.Play());
  audio.Stop();
  g_noThread = false;
  EXPECT_TRUE(audio.Play());
  EXPECT_TRUE(spy.WaitForWrites(3));
}

TEST(PlaybackFaults, UnusableFormatsAndSizesLeaveAnIdleThread) {
  const WAVEFORMATEX zero{};
  WAVEFORMATEX junk;
  std::memset(&junk, 0xFF, sizeof(junk));
  const std::pair<const WAVEFORMATEX*, uint32_t> cases[] = {
      {&zero, 1280}, {&junk, 1280}, {&kPcm8k, 0}, {&kPcm8k, 0x80000000u}, {&kPcm8k, 0xFFFFFFFFu}};
  for (const auto& [format, size] : cases) {
    WaveSpy spy;
    Player player;
    player.Start(*format, size);
    Sleep(50);
    player.Stop();
    EXPECT_EQ(spy.Writes().size(), 0u);
    EXPECT_EQ(NIVRAL_WVSetWaveFormat(player.handle, nullptr, 1), 0u);
    player.Start();
    EXPECT_TRUE(spy.WaitForWrites(3)) << "as good as new";
  }
}

TEST(PlaybackFaults, NeitherLackOfMemoryNorAThrowingClientNorAForeignMessageEndsTheProcess) {
  Player player;
  for (int phase = 0; phase < 3; ++phase) {
    const FailingMemory failing(3, phase);
    player.Start();
    EXPECT_TRUE(WaitUntil([&] { return failing.Failures() > 0; }));
    player.Stop();
  }
  WaveSpy spy;  // not before: it needs memory
  // What escapes the callback ends the playback as Stop does, and the next start plays.
  const auto closed = spy.Count("OutClose");
  NIVRAL_WVSetWriteWaveCB(player.handle, nullptr,
                          [](uint8_t*, int, void*) -> int { throw std::bad_alloc(); });
  NIVRAL_WVPlayWave(player.handle);
  ASSERT_TRUE(spy.WaitFor("OutClose", closed + 1));
  NIVRAL_WVSetWriteWaveCB(player.handle, &player, &Player::Pull);
  player.Stop();
  player.Start();
  EXPECT_TRUE(spy.WaitForWrites(spy.Writes().size() + 3));

  PostThreadMessageW(static_cast<DWORD>(spy.opened.target), MM_WOM_DONE, 0, 0x1234);
  PostThreadMessageW(static_cast<DWORD>(spy.opened.target), WM_QUIT, 0, 0);
  EXPECT_TRUE(spy.WaitForWrites(spy.Writes().size() + 3));
}

/// Where Stop hangs, the test runs into its time limit.
TEST(PlaybackStop, ReturnsInEveryStateAndWaitsForNoQueuedSound) {
  Player player;
  player.Stop();
  NIVRAL_WVPlayWave(player.handle);  // without a format
  player.Stop();
  constexpr uint32_t kBytesOfMinutes = 1'600'000;
  player.Start(kPcm8k, kBytesOfMinutes);
  player.Stop();
  player.Stop();
  const ULONGLONG start = GetTickCount64();
  player.Start(kPcm8k, kBytesOfMinutes);
  Sleep(300);
  player.Stop();
  EXPECT_LT(GetTickCount64() - start, 60000u);
  player.hasNothing = true;
  player.asked = 0;
  player.Start();
  EXPECT_TRUE(WaitUntil([&] { return player.asked > 0; }));
  player.Stop();
}

TEST(PlaybackStop, FromSeveralThreadsWhileOthersCall) {
  Player player;
  for (int round = 0; round < 10; ++round) {
    player.Start();
    Sleep(30);
    std::vector<std::jthread> threads;
    for (int i = 0; i < 2; ++i)
      threads.emplace_back([&] { player.Stop(); });
    threads.emplace_back([&] {
      for (int i = 0; i < 50; ++i)
        NIVRAL_WVSetVolume(player.handle, 100);
    });
    threads.emplace_back([&] { NIVRAL_WVPlayWave(player.handle); });
    threads.clear();
    player.Stop();
  }
}

TEST(PlaybackSoak, RoundsLeaveNothingBehindWhetherStoppedOrClosedWhilePlaying) {
  ExpectRoundsKeepNothing(80, 4096,
                          [i = size_t{0}]() mutable {  // a leaked buffer pair alone would make 25 600 bytes
                            WaveSpy spy;
                            Player player;
                            player.Start(kPcm8k, 160);
                            EXPECT_TRUE(spy.WaitForWrites(++i % 4));
                            if (i % 2) player.Stop();
                          });
}

}  // namespace
