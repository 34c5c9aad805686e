// SPDX-License-Identifier: MIT
// The DirectSound player on a real device; what it writes is watched at the buffer's Lock and Unlock.
#include "audio/direct_sound.h"

#include <gmock/gmock.h>

#include <atomic>
#include <mutex>
#include <optional>
#include <stdexcept>

#include "audio/player.h"
#include "support/packet_queue.h"
#include "support/process_counts.h"
#include "support/vtable_patch.h"
#include "support/wait.h"

namespace {

using Bytes = std::vector<uint8_t>;

constexpr uint32_t kSegmentBytes = 1280;  // 80 ms

using Buffer = IDirectSoundBuffer8;
using LockMethod = Method<11, Buffer, DWORD, DWORD, void**, DWORD*, void**, DWORD*, DWORD>;
using StopMethod = Method<18, Buffer>;
using UnlockMethod = Method<19, Buffer, void*, DWORD, void*, DWORD>;

/// Plays packets of PCM as they are, or throws.
class PcmSound : public CDirectSound {
 public:
  ~PcmSound() override { Stop(); }
  std::atomic<bool> throws{false};

 protected:
  uint16_t ConvertPacket(std::span<const uint8_t> packet, std::span<uint8_t> room) override {
    if (throws) throw std::runtime_error("cannot convert");
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
    m_lock.emplace(m_any.get());
    m_unlock.emplace(m_any.get());
    m_stop.emplace(m_any.get());
    LockMethod::then = [this](HRESULT result, Buffer*, DWORD offset, DWORD, void** first, DWORD* count,
                              void** second, DWORD* secondCount, DWORD) {
      m_offset = offset;
      if (m_secondPart > 0) {
        *count -= m_secondPart;
        *second = static_cast<uint8_t*>(*first) + *count;
        *secondCount = m_secondPart;
      }
      return result;
    };
    UnlockMethod::then = [this](HRESULT result, Buffer*, void* first, DWORD count, void*, DWORD secondCount) {
      const auto* begin = static_cast<const uint8_t*>(first);  // the second part follows it
      const std::lock_guard guard(m_mutex);
      if (m_keep) m_writes.push_back({m_offset, Bytes(begin, begin + count + secondCount)});
      return result;
    };
  }

  struct Written {
    DWORD offset;
    Bytes bytes;
  };
  std::vector<Written> Writes() const {
    const std::lock_guard guard(m_mutex);
    return m_writes;
  }

  int Open(CDirectSound& sound, uint32_t segmentBytes = kSegmentBytes) {
    sound.SetFormat(kPcm8k, segmentBytes);
    return sound.Open(m_window.Handle(), &queue, this);
  }
  /// Opens and starts.
  int Play(CDirectSound& sound) { return Open(sound) && sound.Start(); }

  bool WaitForWrites(size_t count) const {
    return WaitUntil([&] { return Writes().size() >= count; });
  }

  PacketQueue queue;
  std::atomic<bool> m_keep{true};  ///< what is written
  DWORD m_secondPart = 0;          ///< bytes at a lock's end that come as its second part

 private:
  TestWindow m_window{8, 8};
  ComPtr<IDirectSound8> m_device;
  ComPtr<Buffer> m_any;
  DWORD m_offset = 0;
  mutable std::mutex m_mutex;
  std::vector<Written> m_writes;
  std::optional<LockMethod> m_lock;
  std::optional<UnlockMethod> m_unlock;
  std::optional<StopMethod> m_stop;
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
  const auto writes = Writes();
  EXPECT_EQ(writes[0].bytes, Bytes(4 * kSegmentBytes, 0x64));
  for (size_t i = 1; i < writes.size(); ++i) {
    EXPECT_EQ(writes[i].offset, (i - 1) % 4 * kSegmentBytes);
    EXPECT_EQ(writes[i].bytes, Bytes(kSegmentBytes, 0x64));
  }
}

TEST_F(DirectSound, AConversionFillsBothPartsOfALockFromTheFirstSegmentAtEachStartUntilItThrows) {
  PcmSound sound;
  ASSERT_EQ(Open(sound), 1);
  for (const DWORD secondPart : {0u, 640u}) {
    m_secondPart = secondPart;
    const size_t first = Writes().size();
    queue.Push(Bytes(700, 0x21));
    queue.Push(Bytes(300, 0x22));
    EXPECT_EQ(sound.Start(), 1);
    ASSERT_TRUE(WaitForWrites(first + 2));
    sound.Stop();
    sound.Stop();
    const int firstPacket = secondPart ? 640 : 700;  // what no part has room for is dropped
    Bytes expected(kSegmentBytes, 0x64);
    std::fill_n(expected.begin(), firstPacket, uint8_t{0x21});
    std::fill_n(expected.begin() + firstPacket, 300, uint8_t{0x22});
    EXPECT_EQ(Writes()[first].bytes, expected);
    EXPECT_EQ(Writes()[first].offset, 0u);
    EXPECT_EQ(Writes()[first + 1].bytes, Bytes(kSegmentBytes, 0x64));
    EXPECT_EQ(Writes()[first + 1].offset, kSegmentBytes);
  }
  sound.throws = true;
  StopMethod::calls = 0;
  EXPECT_EQ(sound.Start(), 1);
  EXPECT_TRUE(WaitUntil([] { return StopMethod::calls == 1; })) << "the last second would repeat for ever";
  sound.Stop();
  sound.throws = false;
  EXPECT_EQ(sound.Start(), 1);
  EXPECT_TRUE(WaitForWrites(Writes().size() + 2));
}

TEST_F(DirectSound, ALostBufferIsLockedOnceMoreAndAPausedOneIsLeftAlone) {
  CDirectSound sound;
  ASSERT_EQ(Play(sound), 1);
  // Lost again right away: that segment keeps its content, the cursor stays and refilling goes on.
  for (const int lost : {1, 2}) {
    LockMethod::Fail(DSERR_BUFFERLOST, lost);
    EXPECT_TRUE(WaitUntil([&] { return LockMethod::failing == 0; }));
    ASSERT_TRUE(WaitForWrites(Writes().size() + 2));
  }
  sound.Pause(1);
  EXPECT_TRUE(WaitUntil([&] {
    const size_t before = Writes().size();
    Pump(5 * 80);
    return Writes().size() == before;
  })) << "refilling goes on while paused";
  sound.Pause(0);
  ASSERT_TRUE(WaitForWrites(Writes().size() + 2));
  const auto writes = Writes();
  for (size_t i = 1; i < writes.size(); ++i)
    EXPECT_EQ(writes[i].offset, (i - 1) % 4 * kSegmentBytes);
}

TEST_F(DirectSound, AFailedOpenHoldsNothingAndRoundsLeaveNothingBehind) {
  CDirectSound sound;
  EXPECT_EQ(sound.Start(), 0);
  for (const uint32_t bytes : {0u, 0x04000000u, 0xFFFFFFFFu})
    EXPECT_EQ(Open(sound, bytes), 0);
  LockMethod::Fail(DSERR_BUFFERLOST, 2);
  EXPECT_EQ(Play(sound), 0);
  EXPECT_EQ(Play(sound), 1);
  m_keep = false;  // it would be counted
  ExpectRoundsKeepNothing(30, 16384, [&] {
    EXPECT_EQ(Play(sound), 1) << "replaces what plays";
    sound.Pause(1);
  });
}

}  // namespace
