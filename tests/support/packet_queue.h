// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstring>
#include <deque>
#include <iterator>
#include <mutex>
#include <vector>

#include "audio/buffer_fill.h"

using namespace libnivral;

/// A byte queue as a client would write one.
class PacketQueue : public ByteQueue {
 public:
  size_t Take(uint8_t* to, size_t count) override {
    std::lock_guard lock(m_mutex);
    count = std::min(count, m_bytes.size());
    std::copy_n(m_bytes.begin(), count, to);
    m_bytes.erase(m_bytes.begin(), m_bytes.begin() + static_cast<ptrdiff_t>(count));
    return count;
  }

  void Push(const std::vector<uint8_t>& data) {
    std::vector<uint8_t> packet = Header(static_cast<uint32_t>(data.size()));
    std::copy(data.begin(), data.end(), std::back_inserter(packet));
    PushRaw(packet);
  }

  /// A header whose data never comes.
  void PushHeader(uint32_t length) { PushRaw(Header(length)); }

  void PushRaw(const std::vector<uint8_t>& bytes) {
    std::lock_guard lock(m_mutex);
    m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
  }

  size_t Size() const {
    std::lock_guard lock(m_mutex);
    return m_bytes.size();
  }

 private:
  static std::vector<uint8_t> Header(uint32_t length) {
    std::vector<uint8_t> header(kPacketHeaderBytes, 0xA5);
    std::memcpy(header.data() + sizeof(length), &length, sizeof(length));
    return header;
  }

  mutable std::mutex m_mutex;
  std::deque<uint8_t> m_bytes;
};
