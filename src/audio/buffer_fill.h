// SPDX-License-Identifier: MIT
// How playing buffers are filled: of the wave-out player from the client, of DirectSound's from packets.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace libnivral {

/// What every playback buffer holds before the client's PCM: the level the device starts on.
constexpr uint8_t kInitialFill = 0x64;

/// Where playback buffers get their samples from.
class SampleSource {
 public:
  virtual ~SampleSource() = default;
  virtual bool Stopped() const = 0;
  /// Asks the client for a whole buffer. Bytes written, zero or less for "nothing yet"; none without a
  /// client.
  virtual std::optional<int> Pull(std::span<uint8_t> buffer) = 0;
  /// Lets other threads run while the client has nothing.
  virtual void YieldThread() = 0;
};

/// Fills one playback buffer: with zeros when paused, else from the source. Every request gets the buffer's
/// start and full size until the answers add up to the size; a buffer that nothing was written to is zeroed.
void FillPlaybackBuffer(std::span<uint8_t> buffer, bool paused, SampleSource& source);

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

constexpr uint32_t kSegmentCount = 4;

/// A looping buffer of four equal segments and the offset that is refilled next, all in bytes.
class SegmentRing {
 public:
  explicit SegmentRing(uint32_t segmentBytes = 0) : m_segmentBytes(segmentBytes) {}

  /// The largest buffer DirectSound makes is 0x0FFFFFFF bytes.
  bool Usable() const { return m_segmentBytes > 0 && m_segmentBytes <= 0x0FFFFFFF / kSegmentCount; }
  uint32_t SegmentBytes() const { return m_segmentBytes; }
  uint32_t TotalBytes() const { return m_segmentBytes * kSegmentCount; }
  uint32_t SegmentOffset(uint32_t index) const { return m_segmentBytes * index; }

  uint32_t Cursor() const { return m_cursor; }
  void Rewind() { m_cursor = 0; }
  void Advance(uint32_t bytes) { m_cursor = (m_cursor + bytes) % TotalBytes(); }

 private:
  uint32_t m_segmentBytes;
  uint32_t m_cursor = 0;
};

}  // namespace libnivral
