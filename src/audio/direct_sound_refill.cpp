// SPDX-License-Identifier: MIT
// The worker thread of CDirectSound: from Start to Stop it alone writes the playing buffer.
#include "audio/buffer_fill.h"
#include "audio/direct_sound.h"
#include "audio/sound_buffer_lock.h"
#include "util/contained.h"

namespace libnivral {

class CDirectSound::Converter final : public PacketConverter {
 public:
  explicit Converter(CDirectSound& player) : m_player(player) {}
  bool Stopping() const override {
    return WaitForSingleObject(m_player.m_worker.StopEvent(), 0) == WAIT_OBJECT_0;
  }
  uint16_t Convert(std::span<const uint8_t> packet, std::span<uint8_t> room) override {
    return m_player.ConvertPacket(packet, room);
  }

 private:
  CDirectSound& m_player;
};

uint16_t CDirectSound::ConvertPacket(std::span<const uint8_t>, std::span<uint8_t>) {
  return 0;
}

DWORD CDirectSound::RefillThread(void* player) {
  auto& self = *static_cast<CDirectSound*>(player);
  // The queue and the conversion are the client's. Without refills the buffer would repeat its last second.
  if (!Contained("CDirectSound::RefillThread", [&self] { self.RefillUntilStopped(); }))
    self.m_pBuffer8->Stop();
  return 0;
}

void CDirectSound::RefillUntilStopped() {
  HANDLE handles[1 + kSegmentCount] = {m_worker.StopEvent()};
  for (uint32_t i = 0; i < kSegmentCount; ++i)
    handles[1 + i] = m_events[i].get();
  for (;;) {
    const DWORD signalled = WaitForMultipleObjects(1 + kSegmentCount, handles, FALSE, INFINITE);
    if (signalled < WAIT_OBJECT_0 + 1 || signalled > WAIT_OBJECT_0 + kSegmentCount) return;
    RefillSegment();
  }
}

/// A buffer that stays lost keeps its old content, and the cursor its place.
void CDirectSound::RefillSegment() {
  const SoundBufferLock lock(*m_pBuffer8.get(), m_ring.Cursor(), m_ring.SegmentBytes());
  if (!lock) return;
  Converter converter(*this);
  const std::span<uint8_t> packet(m_packet.get(), m_packetCapacity);
  const std::span<uint8_t> overflow(m_overflow.get(), kOverflowBytes);
  for (const std::span<uint8_t> part : {lock.First(), lock.Second()}) {
    if (part.empty()) continue;
    FillPart(part, m_queue, packet, overflow, converter);
    m_ring.Advance(static_cast<uint32_t>(part.size()));
  }
}

}  // namespace libnivral
