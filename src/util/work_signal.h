// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

/// Tells one worker thread that there is work, or that there will be none any more. Unlike an event it costs
/// the side that raises it no call into the system. Any thread may call; closed at first.
class WorkSignal {
 public:
  WorkSignal() = default;
  WorkSignal(const WorkSignal&) = delete;
  WorkSignal& operator=(const WorkSignal&) = delete;

  void Open() {
    const Guard guard(m_lock);
    m_raised = m_closed = false;
  }

  void Close() { Set(m_closed); }

  /// Lets the next Wait, or the present one, return at once. Raising again before that changes nothing.
  void Raise() { Set(m_raised); }

  /// True once for all that was raised since the last call; false when closed.
  bool Wait() {
    const Guard guard(m_lock);
    while (!m_raised && !m_closed)
      SleepConditionVariableSRW(&m_changed, &m_lock, INFINITE, 0);
    m_raised = false;
    return !m_closed;
  }

 private:
  class Guard {
   public:
    explicit Guard(SRWLOCK& lock) : m_lock(lock) { AcquireSRWLockExclusive(&m_lock); }
    ~Guard() { ReleaseSRWLockExclusive(&m_lock); }
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;

   private:
    SRWLOCK& m_lock;
  };

  /// Wakes without the lock, which the worker wants at once.
  void Set(bool& flag) {
    {
      const Guard guard(m_lock);
      flag = true;
    }
    WakeConditionVariable(&m_changed);
  }

  SRWLOCK m_lock = SRWLOCK_INIT;
  CONDITION_VARIABLE m_changed = CONDITION_VARIABLE_INIT;
  bool m_raised = false;
  bool m_closed = true;
};
