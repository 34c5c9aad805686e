// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <optional>

#include "util/mutex_lock.h"

namespace libnivral {

/// Records waiting for their frames, oldest first. Of more than kCapacity the newest are kept. Memory comes
/// with the first record; a record that there is none for is dropped.
template <class Record>
class RecordRing {
 public:
  /// Far more than an algorithm runs ahead of its frames: ten seconds at 25 frames a second.
  static constexpr size_t kCapacity = 256;

  void Append(const Record& record) {
    if (!m_records) m_records.reset(new (std::nothrow) Record[kCapacity]);
    if (!m_records) return;
    m_records[(m_first + m_count) % kCapacity] = record;
    if (m_count < kCapacity) {
      ++m_count;
    } else {
      m_first = (m_first + 1) % kCapacity;
    }
  }

  std::optional<Record> Take() {
    if (m_count == 0) return std::nullopt;
    const Record& oldest = m_records[m_first];
    m_first = (m_first + 1) % kCapacity;
    --m_count;
    return oldest;
  }

 private:
  std::unique_ptr<Record[]> m_records;
  size_t m_first = 0;
  size_t m_count = 0;
};

/// Hands records from the client's algorithm threads to the thread that brings the frames.
template <class Record>
class RecordQueue {
 public:
  void Append(const Record& record) {
    CAutoLock guard(&m_lock);
    m_records.Append(record);
  }

  std::optional<Record> Take() {
    CAutoLock guard(&m_lock);
    return m_records.Take();
  }

 private:
  CMutexLock m_lock;
  RecordRing<Record> m_records;
};

}  // namespace libnivral
