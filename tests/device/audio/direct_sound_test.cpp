// SPDX-License-Identifier: MIT
// The DirectSound player on a real device; what it writes is watched at the buffer's Lock and Unlock.
#include "audio/direct_sound.h"

#include <gmock/gmock.h>

#include <atomic>
#include <mutex>

#include "audio/player.h"
#include "support/import_patch.h"
#include "support/packet_queue.h"
#include "support/process_counts.h"
#include "support/vtable_patch.h"
#include "support/wait.h"

namespace {

using Bytes = std::vector<uint8_t>;

constexpr uint32_t kSegmentBytes = 1280;  // 80 ms

/// Watches the locks of every sound buffer of this program, by way of the table that they share. One at a time.
class LockSpy {
 public:
  struct Written {
    DWORD offset;
    Bytes bytes;
  };

  explicit LockSpy(IDirectSoundBuffer8* any) : m_lock(any, 11, &Lock), m_unlock(any, 19, &Unlock) {
    s_spy = this;
  }

  std::vector<Written> Writes() const {
    const std::lock_guard guard(m_mutex);
    return m_writes;
  }

  std::atomic<int> lost{0};  ///< that many locks find the buffer lost

 private:
  static HRESULT WINAPI Lock(IDirectSoundBuffer8* buffer, DWORD offset, DWORD bytes, void** first,
                             DWORD* firstBytes, void** second, DWORD* secondBytes, DWORD flags) {
    if (s_spy->lost > 0 && s_spy->lost-- > 0) return DSERR_BUFFERLOST;
    s_spy->m_offset = offset;
    return s_spy->m_lock.Original<decltype(Lock)>()(buffer, offset, bytes, first, firstBytes, second,
                                                    secondBytes, flags);
  }

  static HRESULT WINAPI Unlock(IDirectSoundBuffer8* buffer, void* first, DWORD bytes, void* second,
                               DWORD secondBytes) {
    const auto* begin = static_cast<const uint8_t*>(first);
    {
      const std::lock_guard guard(s_spy->m_mutex);
      s_spy->m_writes.push_back({s_spy->m_offset, Bytes(begin, begin + bytes)});
    }
    return s_spy->m_unlock.Original<decltype(Unlock)>()(buffer, first, bytes, second, secondBytes);
  }

  static inline LockSpy* s_spy = nullptr;
  VtablePatch m_lock;
  VtablePatch m_unlock;
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

TEST_F(DirectSound, AConversionIsPlayedAndTheRestOfASegmentIsFilledFromTheFirstAtEachStart) {
  PcmSound sound;
  ASSERT_EQ(Open(sound), 1);
  for (int round = 0; round < 2; ++round) {
    const size_t first = spy->Writes().size();
    queue.Push(Bytes(700, 0x21));
    queue.Push(Bytes(300, 0x22));
    EXPECT_EQ(sound.Start(), 1);
    ASSERT_TRUE(WaitForWrites(first + 2));
    sound.Stop();
    sound.Stop();
    Bytes expected(kSegmentBytes, 0x64);
    std::fill_n(expected.begin(), 700, uint8_t{0x21});
    std::fill_n(expected.begin() + 700, 300, uint8_t{0x22});
    EXPECT_EQ(spy->Writes()[first].bytes, expected);
    EXPECT_EQ(spy->Writes()[first].offset, 0u);
    EXPECT_EQ(spy->Writes()[first + 1].bytes, Bytes(kSegmentBytes, 0x64));
  }
}

TEST_F(DirectSound, ALostBufferIsLockedOnceMore) {
  CDirectSound sound;
  ASSERT_EQ(Play(sound), 1);
  // Lost again right away: that segment keeps its content, the cursor stays and refilling goes on.
  for (const int lost : {1, 2}) {
    spy->lost = lost;
    EXPECT_TRUE(WaitUntil([&] { return spy->lost == 0; }));
    ASSERT_TRUE(WaitForWrites(spy->Writes().size() + 2));
  }
  const auto writes = spy->Writes();
  for (size_t i = 1; i < writes.size(); ++i)
    EXPECT_EQ(writes[i].offset, (i - 1) % 4 * kSegmentBytes);
}

HRESULT WINAPI NoDriver(const GUID*, IDirectSound8**, IUnknown*) {
  return DSERR_NODRIVER;
}

TEST_F(DirectSound, AFailedOpenHoldsNothingAndRoundsLeaveNothingBehind) {
  CDirectSound sound;
  EXPECT_EQ(sound.Start(), 0);
  for (const uint32_t bytes : {0u, 0x04000000u, 0xFFFFFFFFu})
    EXPECT_EQ(Open(sound, bytes), 0);
  {
    const ImportPatch noDevice("dsound.dll", "DirectSoundCreate8", &NoDriver);
    EXPECT_EQ(Open(sound), 0);
  }
  spy->lost = 2;
  EXPECT_EQ(Play(sound), 0);
  EXPECT_EQ(Play(sound), 1);
  spy.reset();  // what it notes would be counted
  ExpectRoundsKeepNothing(30, 16384, [&] {
    EXPECT_EQ(Play(sound), 1) << "replaces what plays";
    sound.Pause(1);
  });
}

}  // namespace
