// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

namespace libnivral {

/// Holds a slim lock for a scope. Neither taking nor making such a lock can fail or needs memory; it must
/// not be taken twice.
class SrwGuard {
 public:
  explicit SrwGuard(SRWLOCK& lock) : m_lock(lock) { AcquireSRWLockExclusive(&m_lock); }
  ~SrwGuard() { ReleaseSRWLockExclusive(&m_lock); }
  SrwGuard(const SrwGuard&) = delete;
  SrwGuard& operator=(const SrwGuard&) = delete;

 private:
  SRWLOCK& m_lock;
};

/// Tells one worker thread that there is work, or that there will be none any more. Unlike an event it costs
/// the side that raises it no call into the system. Any thread may call; closed at first.
class WorkSignal {
 public:
  WorkSignal() = default;
  WorkSignal(const WorkSignal&) = delete;
  WorkSignal& operator=(const WorkSignal&) = delete;

  void Open() {
    const SrwGuard guard(m_lock);
    m_raised = m_closed = false;
  }

  void Close() { Set(m_closed); }

  /// Lets the next Wait, or the present one, return at once. Raising again before that changes nothing.
  void Raise() { Set(m_raised); }

  /// True once for all that was raised since the last call; false when closed.
  bool Wait() {
    const SrwGuard guard(m_lock);
    while (!m_raised && !m_closed)
      SleepConditionVariableSRW(&m_changed, &m_lock, INFINITE, 0);
    m_raised = false;
    return !m_closed;
  }

 private:
  /// Wakes without the lock, which the worker wants at once.
  void Set(bool& flag) {
    {
      const SrwGuard guard(m_lock);
      flag = true;
    }
    WakeConditionVariable(&m_changed);
  }

  SRWLOCK m_lock = SRWLOCK_INIT;
  CONDITION_VARIABLE m_changed = CONDITION_VARIABLE_INIT;
  bool m_raised = false;
  bool m_closed = true;
};

}  // namespace libnivral
