// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace libnivral {

/// A locked queue of bytes that one thread fills and the player empties. A packet must appear whole, its
/// header and data added under one lock: the player takes them in two steps and could not find the next
/// header otherwise.
class ByteQueue {
 public:
  virtual ~ByteQueue() = default;
  /// Moves up to `count` bytes to `to` and returns how many there were. Called on the player's refill thread.
  virtual size_t Take(uint8_t* to, size_t count) = 0;
};

/// Before each packet in the queue: four 32-bit words, of which the second is the length of its data in
/// bytes.
constexpr size_t kPacketHeaderBytes = 16;

/// Turns packets into samples, for FillPart.
class PacketConverter {
 public:
  virtual ~PacketConverter() = default;
  virtual bool Stopping() const = 0;
  /// Writes 16-bit samples to `room` and returns their number. Called with an empty packet first, for samples
  /// that an earlier packet left over.
  virtual uint16_t Convert(std::span<const uint8_t> packet, std::span<uint8_t> room) = 0;
};

/// Pops the next packet's data into `scratch`; none when the queue holds no whole header. What of a packet
/// `scratch` cannot hold is dropped by way of `overflow`, which must not be empty.
std::optional<std::span<const uint8_t>> PopPacket(ByteQueue& queue, std::span<uint8_t> scratch,
                                                  std::span<uint8_t> overflow);

/// Fills one locked part of the playing buffer with what the converter makes of the queued packets, and the
/// rest with the initial level. As long as the converter makes nothing, this drains the
/// queue. A null queue is an empty one.
void FillPart(std::span<uint8_t> part, ByteQueue* queue, std::span<uint8_t> scratch,
              std::span<uint8_t> overflow, PacketConverter& converter);

}  // namespace libnivral
