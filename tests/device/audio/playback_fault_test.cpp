// SPDX-License-Identifier: MIT
// Faults of the device, promptness of Stop in every state, and what is left behind.
#include <gmock/gmock.h>

#include <algorithm>
#include <memory>
#include <new>
#include <string>
#include <thread>
#include <vector>

#include "audio/audio.h"
#include "audio/player.h"
#include "audio/wave_out_spy.h"
#include "support/failing_memory.h"
#include "support/process_counts.h"

namespace {

using testing::ElementsAre;

bool WaitForCall(const WaveOutSpy& spy, const std::string& name) {
  return WaitUntil([&] { return std::ranges::count(spy.Calls(), name) > 0; });
}

TEST(PlaybackFaults, AnInvalidHandleWhilePreparingIsSteppedOver) {
  WaveOutSpy spy;
  spy.fault = [](const std::string& name, int before) -> MMRESULT {
    return name == "PrepareHeader" && before == 0 ? MMSYSERR_INVALHANDLE : 0;
  };
  Player player;
  player.Start();
  ASSERT_TRUE(spy.WaitForWrites(4));
  auto calls = spy.Calls();
  calls.resize(5);
  EXPECT_THAT(calls, ElementsAre("Open", "PrepareHeader", "PrepareHeader", "Write", "Write"));
  EXPECT_EQ(std::ranges::count(spy.Calls(), "Close"), 0);
}

TEST(PlaybackFaults, AnyOtherFailureWhilePreparingClosesAndAllowsANewStart) {
  for (const int header : {0, 1}) {
    WaveOutSpy spy;
    spy.fault = [header](const std::string& name, int before) -> MMRESULT {
      // The next start comes while the refused device is still being closed.
      if (name == "UnprepareHeader" && before == 0) Sleep(200);
      return name == "PrepareHeader" && before == header ? MMSYSERR_NOMEM : 0;
    };
    Player player;
    player.Start();
    ASSERT_TRUE(WaitForCall(spy, "UnprepareHeader"));
    EXPECT_EQ(std::ranges::count(spy.Calls(), "Write"), 0);
    // The thread ended by itself; nothing needs stopping before the next start.
    WaitUntil([&] { return NIVRAL_WVPlayWave(player.handle) == 0 && !spy.Writes().empty(); });
    EXPECT_TRUE(spy.WaitForWrites(3));
    EXPECT_EQ(std::ranges::count(spy.Calls(), "Open"), 2);
    NIVRAL_WVSetVolume(player.handle, 100);
    EXPECT_EQ(std::ranges::count(spy.Calls(), "SetVolume"), 1);
  }
}

HANDLE WINAPI CreateThreadSlowly(SECURITY_ATTRIBUTES* security, SIZE_T stack, LPTHREAD_START_ROUTINE body,
                                 void* argument, DWORD flags, DWORD* id) {
  const HANDLE thread = RealFunction<decltype(CreateThread)>("kernel32.dll", "CreateThread")(
      security, stack, body, argument, flags, id);
  Sleep(100);
  return thread;
}

TEST(PlaybackFaults, TheThreadKnowsItsHandleHoweverLateThatIsStored) {
  WaveOutSpy spy;
  ImportPatch slow("kernel32.dll", "CreateThread", &CreateThreadSlowly);
  Player player;
  player.Start();
  EXPECT_TRUE(spy.WaitForWrites(3));
}

TEST(PlaybackFaults, WithoutAThreadPlayFailsAndCanBeTriedAgain) {
  CAudio audio;
  audio.SetWaveFormat(&kPcm8k, kBufferBytes);
  {
    HANDLE(WINAPI * noThread)
    (SECURITY_ATTRIBUTES*, SIZE_T, LPTHREAD_START_ROUTINE, void*, DWORD,
     DWORD*) = [](SECURITY_ATTRIBUTES*, SIZE_T, LPTHREAD_START_ROUTINE, void*, DWORD, DWORD*) -> HANDLE {
      return nullptr;
    };
    ImportPatch patch("kernel32.dll", "CreateThread", noThread);
    EXPECT_FALSE(audio.Play());
    EXPECT_FALSE(audio.Play());
    audio.Stop();
  }
  EXPECT_TRUE(audio.Play());
}

TEST(PlaybackFaults, UnusableFormatsAndSizesLeaveAnIdleThread) {
  const WAVEFORMATEX zero{};
  WAVEFORMATEX junk;
  std::memset(&junk, 0xFF, sizeof(junk));
  const struct {
    const WAVEFORMATEX* format;
    uint32_t size;
  } cases[] = {{&zero, 1280}, {&junk, 1280}, {&kPcm8k, 0}, {&kPcm8k, 0x80000000u}, {&kPcm8k, 0xFFFFFFFFu}};
  for (const auto& bad : cases) {
    WaveOutSpy spy;
    Player player;
    player.Start(*bad.format, bad.size);
    Sleep(50);
    EXPECT_EQ(spy.Writes().size(), 0u);
    EXPECT_LE(TimeStop(player.handle), kStopLimitMs);
    EXPECT_EQ(NIVRAL_WVSetWaveFormat(player.handle, nullptr, 1), 0u);
    // The player is as good as new.
    player.Start();
    EXPECT_TRUE(spy.WaitForWrites(3));
  }
}

TEST(PlaybackFaults, NeitherLackOfMemoryNorAThrowingClientEndsTheProcess) {
  WaveOutSpy spy;
  Player player;
  for (int phase = 0; phase < 4; ++phase) {
    const FailingMemory failing(GetModuleHandleW(nullptr), phase + 1);
    player.Start();
    EXPECT_TRUE(WaitUntil([&] { return failing.Failures() > 0; }));
    NIVRAL_WVStopWave(player.handle);
  }
  // What escapes the callback ends the playback as Stop does, and the next start plays.
  NIVRAL_WVSetWriteWaveCB(player.handle, nullptr,
                          [](uint8_t*, int, void*) -> int { throw std::bad_alloc(); });
  NIVRAL_WVPlayWave(player.handle);
  ASSERT_TRUE(WaitForCall(spy, "Close"));
  NIVRAL_WVSetWriteWaveCB(player.handle, &player, &Player::Pull);
  const size_t before = spy.Writes().size();
  NIVRAL_WVStopWave(player.handle);
  player.Start();
  EXPECT_TRUE(spy.WaitForWrites(before + 3));
}

TEST(PlaybackFaults, AForeignMessageToTheThreadIsIgnored) {
  WaveOutSpy spy;
  Player player;
  player.Start();
  ASSERT_TRUE(spy.WaitForWrites(3));
  PostThreadMessageW(static_cast<DWORD>(spy.target), MM_WOM_DONE, 0, 0x1234);
  PostThreadMessageW(static_cast<DWORD>(spy.target), WM_QUIT, 0, 0);
  EXPECT_TRUE(spy.WaitForWrites(spy.Writes().size() + 3));
}

TEST(PlaybackStop, IsPromptInEveryState) {
  Player player;
  const auto start = [&] {
    player.asked = 0;
    player.Start(kPcm8k, kLongBufferBytes);
  };
  const auto isAsked = [&] { return player.asked > 0; };
  EXPECT_LE(TimeStop(player.handle), kStopLimitMs) << "never played";
  NIVRAL_WVPlayWave(player.handle);
  EXPECT_LE(TimeStop(player.handle), kStopLimitMs) << "before a format was set";
  start();
  EXPECT_LE(TimeStop(player.handle), kStopLimitMs) << "right after the start";
  EXPECT_LE(TimeStop(player.handle), kStopLimitMs) << "twice";
  start();
  Sleep(300);
  EXPECT_LE(TimeStop(player.handle), kStopLimitMs) << "with twenty seconds queued";
  player.answer = 0;
  player.Start();
  EXPECT_TRUE(WaitUntil(isAsked));
  EXPECT_LE(TimeStop(player.handle), kStopLimitMs) << "while the callback has nothing";
}

TEST(PlaybackStop, FromSeveralThreadsWhileOthersCall) {
  Player player;
  for (int round = 0; round < 10; ++round) {
    player.Start();
    Sleep(30);
    std::vector<std::thread> threads;
    for (int i = 0; i < 2; ++i)
      threads.emplace_back([&] { EXPECT_LE(TimeStop(player.handle), kStopLimitMs); });
    threads.emplace_back([&] {
      for (int i = 0; i < 50; ++i)
        NIVRAL_WVSetVolume(player.handle, 100);
    });
    threads.emplace_back([&] { NIVRAL_WVPlayWave(player.handle); });
    for (auto& thread : threads)
      thread.join();
    NIVRAL_WVStopWave(player.handle);
  }
}

TEST(PlaybackStop, ClosingWhilePlayingIsClean) {
  for (int i = 0; i < 10; ++i) {
    Player player;
    player.Start();
    Sleep(i * 20);
  }
}

TEST(PlaybackSoak, AHundredRoundsLeaveNothingBehind) {
  ExpectRoundsKeepNothing(100, 4096, [] {  // a leaked buffer pair alone would make 32 000 bytes
    WaveOutSpy spy;
    Player player;
    player.Start(kPcm8k, 160);
    EXPECT_TRUE(spy.WaitForWrites(3));
    NIVRAL_WVStopWave(player.handle);
  });
}

TEST(PlaybackSoak, FourPlayersAtOnce) {
  const ULONGLONG start = GetTickCount64();
  std::vector<std::unique_ptr<Player>> players;
  for (int i = 0; i < 4; ++i) {
    players.push_back(std::make_unique<Player>());
    players.back()->Start();
  }
  // The device sets the pace: a buffer lasts 80 ms, and two are in it from the start.
  for (const auto& player : players) {
    EXPECT_TRUE(WaitUntil([&] { return player->asked >= 10; }));
    EXPECT_LE(player->asked, (GetTickCount64() - start) / 80 + 4);
  }
  for (const auto& player : players)
    EXPECT_LE(TimeStop(player->handle), kStopLimitMs);
}

}  // namespace
