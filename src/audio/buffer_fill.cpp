// SPDX-License-Identifier: MIT
#include "audio/buffer_fill.h"

#include <algorithm>
#include <cstring>

namespace libnivral {
namespace {

/// Sum of the client's answers; 64 bits because each answer may be anything.
int64_t PullUntilFull(std::span<uint8_t> buffer, SampleSource& source) {
  const auto size = static_cast<int64_t>(buffer.size());
  int64_t total = 0;
  while (total < size && !source.Stopped()) {
    const std::optional<int> written = source.Pull(buffer);
    if (!written) break;
    if (*written > 0) {
      total += *written;
    } else {
      source.YieldThread();
    }
  }
  return total;
}

constexpr size_t kSampleBytes = 2;

size_t ConvertInto(std::span<uint8_t> room, std::span<const uint8_t> packet, PacketConverter& converter) {
  return std::min(room.size(), kSampleBytes * converter.Convert(packet, room));
}

}  // namespace

void FillPlaybackBuffer(std::span<uint8_t> buffer, bool paused, SampleSource& source) {
  if (paused || PullUntilFull(buffer, source) <= 0) std::ranges::fill(buffer, uint8_t{0});
}

std::optional<std::span<const uint8_t>> PopPacket(ByteQueue& queue, std::span<uint8_t> scratch,
                                                  std::span<uint8_t> overflow) {
  uint8_t header[kPacketHeaderBytes];
  if (queue.Take(header, sizeof(header)) < sizeof(header)) return std::nullopt;
  uint32_t length = 0;
  std::memcpy(&length, header + sizeof(length), sizeof(length));

  const size_t held = std::min<size_t>(length, scratch.size());
  const size_t taken = queue.Take(scratch.data(), held);
  for (size_t left = length - held; left > 0 && taken == held;) {
    const size_t dropped = queue.Take(overflow.data(), std::min(left, overflow.size()));
    if (dropped == 0) break;
    left -= dropped;
  }
  return scratch.first(taken);
}

void FillPart(std::span<uint8_t> part, ByteQueue* queue, std::span<uint8_t> scratch,
              std::span<uint8_t> overflow, PacketConverter& converter) {
  size_t produced = ConvertInto(part, {}, converter);
  while (queue && produced < part.size() && !converter.Stopping()) {
    const auto packet = PopPacket(*queue, scratch, overflow);
    if (!packet) break;
    produced += ConvertInto(part.subspan(produced), *packet, converter);
  }
  std::ranges::fill(part.subspan(produced), kInitialFill);
}

}  // namespace libnivral
