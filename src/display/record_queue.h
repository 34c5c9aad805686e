// SPDX-License-Identifier: MIT
#pragma once

#include "display/record_ring.h"
#include "util/mutex_lock.h"

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
