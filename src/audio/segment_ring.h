// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace libnivral {

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
