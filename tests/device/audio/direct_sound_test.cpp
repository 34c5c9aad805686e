// SPDX-License-Identifier: MIT
// The DirectSound player on a real device; what it writes is watched at the buffer's Lock and Unlock.
#include "audio/direct_sound.h"

#include <gmock/gmock.h>

#include <atomic>
#include <mutex>
#include <new>

#include "audio/player.h"
#include "support/import_patch.h"
#include "support/packet_queue.h"
#include "support/process_counts.h"
#include "support/vtable_patch.h"
#include "support/wait.h"

namespace {

using Bytes = std::vector<uint8_t>;

constexpr uint32_t kSegmentBytes = 1280;  // 80 ms

using LockFunction = HRESULT WINAPI(IDirectSoundBuffer8*, DWORD, DWORD, void**, DWORD*, void**, DWORD*,
                                    DWORD);
using UnlockFunction = HRESULT WINAPI(IDirectSoundBuffer8*, void*, DWORD, void*, DWORD);
using RestoreFunction = HRESULT WINAPI(IDirectSoundBuffer8*);

/// Watches the locks of every sound buffer of this program. One at a time.
class LockSpy {
 public:
  struct Written {
    DWORD offset;
    Bytes bytes;
  };

  explicit LockSpy(IDirectSoundBuffer8* any)
      : m_lock(any, 11, &Lock), m_unlock(any, 19, &Unlock), m_restore(any, 20, &Restore) {
    s_spy = this;
  }

  std::vector<Written> Writes() const {
    const std::lock_guard guard(m_mutex);
    return m_writes;
  }

  std::atomic<int> lost{0};        ///< that many locks find the buffer lost
  std::atomic<bool> split{false};  ///< locks give two parts, as they do where the buffer wraps
  std::atomic<int> restores{0};

 private:
  static HRESULT WINAPI Lock(IDirectSoundBuffer8* buffer, DWORD offset, DWORD bytes, void** first,
                             DWORD* firstBytes, void** second, DWORD* secondBytes, DWORD flags) {
    if (s_spy->lost > 0 && s_spy->lost-- > 0) return DSERR_BUFFERLOST;
    const HRESULT result = s_spy->m_lock.Original<LockFunction>()(buffer, offset, bytes, first, firstBytes,
                                                                  second, secondBytes, flags);
    s_spy->m_offset = offset;
    if (SUCCEEDED(result) && s_spy->split) {
      *secondBytes = *firstBytes / 4;
      *firstBytes -= *secondBytes;
      *second = static_cast<uint8_t*>(*first) + *firstBytes;
    }
    return result;
  }

  /// No buffer of these tests wraps, so that a second part is one that the spy has split off.
  static HRESULT WINAPI Unlock(IDirectSoundBuffer8* buffer, void* first, DWORD firstBytes, void*,
                               DWORD secondBytes) {
    const auto* begin = static_cast<const uint8_t*>(first);
    {
      const std::lock_guard guard(s_spy->m_mutex);
      s_spy->m_writes.push_back({s_spy->m_offset, Bytes(begin, begin + firstBytes + secondBytes)});
    }
    return s_spy->m_unlock.Original<UnlockFunction>()(buffer, first, firstBytes + secondBytes, nullptr, 0);
  }

  static HRESULT WINAPI Restore(IDirectSoundBuffer8* buffer) {
    ++s_spy->restores;
    return s_spy->m_restore.Original<RestoreFunction>()(buffer);
  }

  static inline LockSpy* s_spy = nullptr;
  VtablePatch m_lock;
  VtablePatch m_unlock;
  VtablePatch m_restore;
  DWORD m_offset = 0;
  mutable std::mutex m_mutex;
  std::vector<Written> m_writes;
};

/// Plays packets of PCM as they are, or fails at the first.
class PcmSound : public CDirectSound {
 public:
  ~PcmSound() override { Stop(); }
  bool throws = false;
  std::atomic<int> asked{0};

 protected:
  uint16_t ConvertPacket(std::span<const uint8_t> packet, std::span<uint8_t> room) override {
    ++asked;
    if (throws) throw std::bad_alloc();
    const size_t bytes = std::min(packet.size(), room.size()) & ~size_t{1};
    std::copy_n(packet.begin(), bytes, room.begin());
    return static_cast<uint16_t>(bytes / 2);
  }
};

class DirectSound : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(DirectSoundCreate8(nullptr, m_device.put(), nullptr), DS_OK);
    WAVEFORMATEX format = kPcm8k;
    DSBUFFERDESC description{sizeof(description), 0, 4096, 0, &format, {}};
    ComPtr<IDirectSoundBuffer> buffer;
    ASSERT_EQ(m_device->CreateSoundBuffer(&description, buffer.put(), nullptr), DS_OK);
    ASSERT_EQ(buffer->QueryInterface(IID_IDirectSoundBuffer8, m_any.put_void()), S_OK);
    spy = std::make_unique<LockSpy>(m_any.get());
  }

  int Open(CDirectSound& sound, uint32_t segmentBytes = kSegmentBytes) {
    sound.SetFormat(kPcm8k, segmentBytes);
    return sound.Open(m_window.Handle(), &queue, this);
  }
  /// Opens and starts.
  int Play(CDirectSound& sound) { return Open(sound) && sound.Start(); }

  bool WaitForWrites(size_t count) const {
    return WaitUntil([&] { return spy->Writes().size() >= count; });
  }

  PacketQueue queue;
  std::unique_ptr<LockSpy> spy;

 private:
  TestWindow m_window{8, 8};
  ComPtr<IDirectSound8> m_device;
  ComPtr<IDirectSoundBuffer8> m_any;
};

TEST_F(DirectSound, RefillsEachSegmentInTurnWithTheInitialLevelAndDrainsTheQueue) {
  CDirectSound sound;
  for (int i = 0; i < 20; ++i)
    queue.Push(Bytes(200, 1));
  const ULONGLONG begin = GetTickCount64();
  ASSERT_EQ(Play(sound), 1);
  EXPECT_EQ(sound.Start(), 0);
  EXPECT_EQ(sound.QueueValue(), this);
  ASSERT_TRUE(WaitForWrites(10));
  EXPECT_GE(GetTickCount64() - begin, 500u) << "between the first and the ninth refill eight are played";
  sound.Stop();
  EXPECT_EQ(queue.Size(), 0u);
  const auto writes = spy->Writes();
  EXPECT_EQ(writes[0].bytes, Bytes(4 * kSegmentBytes, 0x64));
  for (size_t i = 1; i < writes.size(); ++i) {
    EXPECT_EQ(writes[i].offset, (i - 1) % 4 * kSegmentBytes);
    EXPECT_EQ(writes[i].bytes, Bytes(kSegmentBytes, 0x64));
  }
}

TEST_F(DirectSound, AConversionIsPlayedAndTheRestOfASegmentIsFilledInBothPartsOfALock) {
  for (const bool split : {false, true}) {
    PcmSound sound;
    ASSERT_EQ(Open(sound), 1);
    const size_t first = spy->Writes().size();
    spy->split = split;
    queue.Push(Bytes(700, 0x21));
    queue.Push(Bytes(300, 0x22));
    EXPECT_EQ(sound.Start(), 1);
    ASSERT_TRUE(WaitForWrites(first + 5));
    sound.Stop();
    spy->split = false;
    // In two parts of 960 and 320 bytes the second packet's tail has no place and is not carried over.
    Bytes expected(kSegmentBytes, 0x64);
    std::fill_n(expected.begin(), 700, uint8_t{0x21});
    std::fill_n(expected.begin() + 700, split ? 260 : 300, uint8_t{0x22});
    EXPECT_EQ(spy->Writes()[first].bytes, expected);
    EXPECT_EQ(spy->Writes()[first + 1].bytes, Bytes(kSegmentBytes, 0x64));
    EXPECT_EQ(spy->Writes()[first + 4].offset, 0u);
  }
}

TEST_F(DirectSound, ALostBufferIsRestoredOnce) {
  CDirectSound sound;
  ASSERT_EQ(Play(sound), 1);
  spy->lost = 1;
  EXPECT_TRUE(WaitUntil([&] { return spy->restores == 1; }));
  ASSERT_TRUE(WaitForWrites(spy->Writes().size() + 2));
  // Lost again right away: that segment keeps its content, the cursor stays and refilling goes on.
  spy->lost = 2;
  EXPECT_TRUE(WaitUntil([&] { return spy->restores == 2 && spy->lost == 0; }));
  const size_t count = spy->Writes().size();
  ASSERT_TRUE(WaitForWrites(count + 1));
  EXPECT_EQ(spy->restores, 2);
  EXPECT_EQ(spy->Writes()[count].offset,
            (spy->Writes()[count - 1].offset + kSegmentBytes) % (4 * kSegmentBytes));
}

TEST_F(DirectSound, PauseHoldsThePlayCursorAndStopAllowsANewStart) {
  CDirectSound sound;
  sound.Pause(1);
  ASSERT_EQ(Play(sound), 1);
  ASSERT_TRUE(WaitForWrites(3));
  sound.Pause(1);
  size_t paused = 0;
  // Played on, it would be refilled every 80 ms; what was signalled before may still be on its way.
  EXPECT_TRUE(WaitUntil([&] {
    paused = spy->Writes().size();
    Sleep(500);
    return spy->Writes().size() == paused;
  }));
  sound.Pause(0);
  EXPECT_TRUE(WaitForWrites(paused + 2));
  sound.Stop();
  sound.Stop();
  const size_t stopped = spy->Writes().size();
  EXPECT_EQ(sound.Start(), 1);
  ASSERT_TRUE(WaitForWrites(stopped + 1));
  EXPECT_EQ(spy->Writes()[stopped].offset, 0u);
}

TEST_F(DirectSound, AConversionThatThrowsEndsThePlaybackAlone) {
  PcmSound sound;
  sound.throws = true;
  ASSERT_EQ(Play(sound), 1);
  EXPECT_TRUE(WaitUntil([&] { return sound.asked > 0; }));
  sound.Stop();
  EXPECT_EQ(sound.asked, 1);
  EXPECT_EQ(sound.Start(), 1);
}

HRESULT WINAPI NoDriver(const GUID*, IDirectSound8**, IUnknown*) {
  return DSERR_NODRIVER;
}

TEST_F(DirectSound, AFailedOpenHoldsNothing) {
  CDirectSound sound;
  EXPECT_EQ(sound.Start(), 0);
  for (const uint32_t bytes : {0u, 0x04000000u, 0x40000001u, 0xFFFFFFFFu})
    EXPECT_EQ(Open(sound, bytes), 0);
  sound.SetFormat(WAVEFORMATEX{}, kSegmentBytes);
  EXPECT_EQ(sound.Open(nullptr, nullptr, nullptr), 0);
  {
    const ImportPatch noDevice("dsound.dll", "DirectSoundCreate8", &NoDriver);
    EXPECT_EQ(Open(sound), 0);
  }
  spy->lost = 2;
  EXPECT_EQ(Play(sound), 0);
  sound.Stop();
  // Opening again replaces what was open, also while it plays.
  EXPECT_EQ(Play(sound), 1);
  EXPECT_EQ(Play(sound), 1);
}

TEST_F(DirectSound, RoundsLeaveNothingBehind) {
  spy.reset();  // what it notes would be counted
  ExpectRoundsKeepNothing(30, 16384, [this] {
    CDirectSound sound;
    EXPECT_EQ(Play(sound), 1);
    Sleep(10);
  });
}

}  // namespace
