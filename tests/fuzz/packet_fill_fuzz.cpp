// SPDX-License-Identifier: MIT
// Any bytes in the queue of the DirectSound player: no packet may overrun the scratch buffers or the part.
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "audio/buffer_fill.h"
#include "support/packet_queue.h"

namespace {

/// Writes as much as the packet's first byte says, up to what it was given.
class FirstByteConverter : public PacketConverter {
 public:
  bool Stopping() const override { return false; }
  uint16_t Convert(std::span<const uint8_t> packet, std::span<uint8_t> room) override {
    if (packet.empty()) return 0;
    const size_t samples = std::min<size_t>(packet[0], room.size() / 2);
    std::fill_n(room.begin(), samples * 2, packet.back());
    return packet[0];
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 3) return 0;
  std::vector<uint8_t> part(data[0] * 4u);
  std::vector<uint8_t> scratch(data[1]);
  std::vector<uint8_t> overflow(1u + data[2]);
  PacketQueue queue;
  queue.PushRaw(std::vector<uint8_t>(data + 3, data + size));
  FirstByteConverter converter;
  // Until nothing is taken any more: then the queue holds less than the header of a packet or nothing.
  for (size_t before = queue.Size() + 1; !part.empty() && queue.Size() < before;) {
    before = queue.Size();
    FillPart(part, &queue, scratch, overflow, converter);
  }
  if (!part.empty() && queue.Size() != 0) std::abort();
  return 0;
}
