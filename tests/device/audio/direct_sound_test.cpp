// SPDX-License-Identifier: MIT
// The DirectSound player on a real device; what it writes is watched at the buffer's Lock and Unlock.
#include "audio/direct_sound.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <memory>
#include <mutex>
#include <new>
#include <vector>

#include "audio/player.h"
#include "support/import_patch.h"
#include "support/packet_queue.h"
#include "support/process_counts.h"
#include "support/vtable_patch.h"

namespace {

using testing::Each;

using Bytes = std::vector<uint8_t>;

constexpr uint32_t kSegmentBytes = 1280;  // 80 ms

using LockFunction = HRESULT WINAPI(IDirectSoundBuffer8*, DWORD, DWORD, void**, DWORD*, void**, DWORD*,
                                    DWORD);
using UnlockFunction = HRESULT WINAPI(IDirectSoundBuffer8*, void*, DWORD, void*, DWORD);
using RestoreFunction = HRESULT WINAPI(IDirectSoundBuffer8*);
constexpr int kLockSlot = 11;
constexpr int kUnlockSlot = 19;
constexpr int kRestoreSlot = 20;

/// Watches the locks of every sound buffer of this program. One at a time.
class LockSpy {
 public:
  struct Written {
    DWORD offset;
    Bytes first;
    Bytes second;
  };

  explicit LockSpy(IDirectSoundBuffer8* any)
      : m_lock(any, kLockSlot, &Lock),
        m_unlock(any, kUnlockSlot, &Unlock),
        m_restore(any, kRestoreSlot, &Restore) {
    s_spy = this;
  }

  std::vector<Written> Writes() const {
    std::lock_guard guard(m_mutex);
    return m_writes;
  }

  std::atomic<int> lost{0};        ///< that many locks find the buffer lost
  std::atomic<bool> split{false};  ///< locks give two parts, as they do where the buffer wraps
  std::atomic<int> locks{0};
  std::atomic<int> restores{0};

 private:
  static HRESULT WINAPI Lock(IDirectSoundBuffer8* buffer, DWORD offset, DWORD bytes, void** first,
                             DWORD* firstBytes, void** second, DWORD* secondBytes, DWORD flags) {
    ++s_spy->locks;
    if (s_spy->lost > 0 && s_spy->lost-- > 0) return DSERR_BUFFERLOST;
    const HRESULT result = s_spy->m_lock.Original<LockFunction>()(buffer, offset, bytes, first, firstBytes,
                                                                  second, secondBytes, flags);
    s_spy->m_offset = offset;
    if (SUCCEEDED(result) && s_spy->split && !*secondBytes) {
      *secondBytes = *firstBytes / 4;
      *firstBytes -= *secondBytes;
      *second = static_cast<uint8_t*>(*first) + *firstBytes;
    }
    return result;
  }

  static HRESULT WINAPI Unlock(IDirectSoundBuffer8* buffer, void* first, DWORD firstBytes, void* second,
                               DWORD secondBytes) {
    const auto copy = [](const void* at, DWORD bytes) {
      const auto* begin = static_cast<const uint8_t*>(at);
      return begin ? Bytes(begin, begin + bytes) : Bytes();
    };
    {
      std::lock_guard guard(s_spy->m_mutex);
      s_spy->m_writes.push_back({s_spy->m_offset, copy(first, firstBytes), copy(second, secondBytes)});
    }
    const DWORD whole = s_spy->split ? firstBytes + secondBytes : firstBytes;
    return s_spy->m_unlock.Original<UnlockFunction>()(buffer, first, whole, s_spy->split ? nullptr : second,
                                                      s_spy->split ? 0 : secondBytes);
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

/// Plays packets of PCM as they are.
class PcmSound : public CDirectSound {
 public:
  ~PcmSound() override { Stop(); }

 protected:
  uint16_t ConvertPacket(std::span<const uint8_t> packet, std::span<uint8_t> room) override {
    const size_t bytes = std::min(packet.size(), room.size()) & ~size_t{1};
    std::copy_n(packet.begin(), bytes, room.begin());
    return static_cast<uint16_t>(bytes / 2);
  }
};

class DirectSound : public testing::Test {
 protected:
  void SetUp() override {
    m_window = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 8, 8, nullptr, nullptr, nullptr, nullptr);
    ASSERT_EQ(DirectSoundCreate8(nullptr, m_device.put(), nullptr), DS_OK);
    ASSERT_EQ(m_device->SetCooperativeLevel(m_window, DSSCL_PRIORITY), DS_OK);
    WAVEFORMATEX format = kPcm8k;
    DSBUFFERDESC description{};
    description.dwSize = sizeof(description);
    description.dwBufferBytes = 4096;
    description.lpwfxFormat = &format;
    ComPtr<IDirectSoundBuffer> buffer;
    ASSERT_EQ(m_device->CreateSoundBuffer(&description, buffer.put(), nullptr), DS_OK);
    ASSERT_EQ(buffer->QueryInterface(IID_IDirectSoundBuffer8, m_any.put_void()), S_OK);
    spy = std::make_unique<LockSpy>(m_any.get());
  }
  ~DirectSound() override {
    spy.reset();
    DestroyWindow(m_window);
  }

  int Open(CDirectSound& sound, uint32_t segmentBytes = kSegmentBytes) {
    sound.SetFormat(kPcm8k, segmentBytes);
    return sound.Open(m_window, &queue, this);
  }

  /// Waits until the initial fill and `refills` more writes have happened.
  bool WaitForRefills(size_t refills) const {
    return WaitUntil([&] { return spy->Writes().size() >= refills + 1; });
  }

  PacketQueue queue;
  std::unique_ptr<LockSpy> spy;

 private:
  HWND m_window = nullptr;
  ComPtr<IDirectSound8> m_device;
  ComPtr<IDirectSoundBuffer8> m_any;
};

TEST_F(DirectSound, RefillsEachSegmentInTurnWithTheInitialLevelAndDrainsTheQueue) {
  CDirectSound sound;
  ASSERT_EQ(Open(sound), 1);
  EXPECT_EQ(sound.QueueValue(), this);
  EXPECT_EQ(spy->Writes()[0].first, Bytes(4 * kSegmentBytes, 0x64));
  for (int i = 0; i < 20; ++i)
    queue.Push(Bytes(200, 1));
  const ULONGLONG begin = GetTickCount64();
  EXPECT_EQ(sound.Start(), 1);
  EXPECT_EQ(sound.Start(), 0);
  ASSERT_TRUE(WaitForRefills(9));
  const ULONGLONG took = GetTickCount64() - begin;
  EXPECT_EQ(queue.Size(), 0u);
  sound.Stop();
  const auto writes = spy->Writes();
  for (size_t i = 1; i < writes.size(); ++i) {
    EXPECT_EQ(writes[i].offset, (i - 1) % 4 * kSegmentBytes);
    EXPECT_EQ(writes[i].first, Bytes(kSegmentBytes, 0x64));
  }
  EXPECT_GE(took, 500u) << "eight segments of 80 ms are played between the first and the ninth refill";
  Sleep(200);
  EXPECT_EQ(spy->Writes().size(), writes.size());
}

TEST_F(DirectSound, AConversionIsPlayedAndTheRestOfASegmentIsFilled) {
  PcmSound sound;
  ASSERT_EQ(Open(sound), 1);
  queue.Push(Bytes(800, 0x21));
  queue.Push(Bytes(300, 0x22));
  EXPECT_EQ(sound.Start(), 1);
  ASSERT_TRUE(WaitForRefills(2));
  const auto writes = spy->Writes();
  Bytes expected(kSegmentBytes, 0x64);
  std::fill_n(expected.begin(), 800, uint8_t{0x21});
  std::fill_n(expected.begin() + 800, 300, uint8_t{0x22});
  EXPECT_EQ(writes[1].first, expected);
  EXPECT_EQ(writes[2].first, Bytes(kSegmentBytes, 0x64));
}

TEST_F(DirectSound, ALockInTwoPartsFillsBoth) {
  PcmSound sound;
  ASSERT_EQ(Open(sound), 1);
  spy->split = true;
  queue.Push(Bytes(1000, 0x21));
  EXPECT_EQ(sound.Start(), 1);
  ASSERT_TRUE(WaitForRefills(5));
  sound.Stop();
  spy->split = false;
  const auto writes = spy->Writes();
  EXPECT_THAT(Bytes(writes[1].first.begin(), writes[1].first.begin() + 960), Each(0x21));
  // The packet's tail has no place in the first part and is not carried over.
  EXPECT_EQ(writes[1].second, Bytes(kSegmentBytes / 4, 0x64));
  EXPECT_EQ(writes[5].offset, 0u);
}

TEST_F(DirectSound, ALostBufferIsRestoredOnce) {
  CDirectSound sound;
  ASSERT_EQ(Open(sound), 1);
  EXPECT_EQ(sound.Start(), 1);
  ASSERT_TRUE(WaitForRefills(2));
  spy->lost = 1;
  const size_t before = spy->Writes().size();
  ASSERT_TRUE(WaitForRefills(before + 1));
  EXPECT_EQ(spy->restores, 1);
  // Lost again right away: that segment keeps its content, the cursor stays and refilling goes on.
  spy->lost = 2;
  EXPECT_TRUE(WaitUntil([&] { return spy->restores >= 2; }));
  const DWORD last = spy->Writes().back().offset;
  const size_t count = spy->Writes().size();
  ASSERT_TRUE(WaitForRefills(count));
  EXPECT_EQ(spy->restores, 2);
  EXPECT_EQ(spy->Writes()[count].offset, (last + kSegmentBytes) % (4 * kSegmentBytes));
}

TEST_F(DirectSound, PauseHoldsThePlayCursorAndStopAllowsANewStart) {
  CDirectSound sound;
  sound.Pause(1);
  ASSERT_EQ(Open(sound), 1);
  EXPECT_EQ(sound.Start(), 1);
  ASSERT_TRUE(WaitForRefills(2));
  sound.Pause(1);
  size_t paused = 0;
  // Played on, it would be refilled every 80 ms; what was signalled before may still be on its way.
  EXPECT_TRUE(WaitUntil([&] {
    paused = spy->Writes().size();
    Sleep(500);
    return spy->Writes().size() == paused;
  }));
  sound.Pause(0);
  EXPECT_TRUE(WaitForRefills(paused + 2));
  sound.Stop();
  sound.Stop();
  const size_t stopped = spy->Writes().size();
  EXPECT_EQ(sound.Start(), 1);
  ASSERT_TRUE(WaitForRefills(stopped + 1));
  EXPECT_EQ(spy->Writes()[stopped].offset, 0u);
}

TEST_F(DirectSound, AConversionThatThrowsEndsThePlaybackAlone) {
  class Throwing : public CDirectSound {
   public:
    ~Throwing() override { Stop(); }
    std::atomic<int> asked{0};

   protected:
    uint16_t ConvertPacket(std::span<const uint8_t>, std::span<uint8_t>) override {
      ++asked;
      throw std::bad_alloc();
    }
  } sound;
  ASSERT_EQ(Open(sound), 1);
  EXPECT_EQ(sound.Start(), 1);
  EXPECT_TRUE(WaitUntil([&] { return sound.asked > 0; }));
  sound.Stop();
  EXPECT_EQ(sound.asked, 1);
  EXPECT_EQ(sound.Start(), 1);
}

TEST_F(DirectSound, AFailedOpenHoldsNothing) {
  CDirectSound sound;
  EXPECT_EQ(sound.Start(), 0);
  for (const uint32_t bytes : {0u, 0x04000000u, 0x40000001u, 0xFFFFFFFFu})
    EXPECT_EQ(Open(sound, bytes), 0);
  sound.SetFormat(WAVEFORMATEX{}, kSegmentBytes);
  EXPECT_EQ(sound.Open(nullptr, nullptr, nullptr), 0);
  {
    HRESULT(WINAPI * fail)
    (const GUID*, IDirectSound8**, IUnknown*) = [](const GUID*, IDirectSound8**, IUnknown*) -> HRESULT {
      return DSERR_NODRIVER;
    };
    ImportPatch noDevice("dsound.dll", "DirectSoundCreate8", fail);
    EXPECT_EQ(Open(sound), 0);
  }
  spy->lost = 2;
  EXPECT_EQ(Open(sound), 0);
  EXPECT_EQ(sound.Start(), 0);
  sound.Stop();
  // Opening again replaces what was open, also while it plays.
  ASSERT_EQ(Open(sound), 1);
  EXPECT_EQ(sound.Start(), 1);
  ASSERT_EQ(Open(sound), 1);
  EXPECT_EQ(sound.Start(), 1);
}

TEST_F(DirectSound, RoundsLeaveNothingBehind) {
  spy.reset();  // what it notes would be counted
  ExpectRoundsKeepNothing(30, 16384, [this] {
    CDirectSound sound;
    EXPECT_EQ(Open(sound), 1);
    EXPECT_EQ(sound.Start(), 1);
    Sleep(10);
  });
}

}  // namespace
