// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <optional>

#include "util/mutex_lock.h"

/// Hands records from the client's algorithm threads to the drawing thread, oldest first. Without a size
/// limit: one record is taken per drawn frame, and none may be lost.
template <class Record>
class RecordQueue {
 public:
  void Append(const Record& record) {
    CAutoLock guard(&m_lock);
    m_records.push_back(record);
  }

  std::optional<Record> Take() {
    CAutoLock guard(&m_lock);
    if (m_records.empty()) return std::nullopt;
    const Record oldest = m_records.front();
    m_records.pop_front();
    return oldest;
  }

 private:
  CMutexLock m_lock;
  std::deque<Record> m_records;
};
