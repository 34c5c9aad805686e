// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <atomic>

namespace libnivral {

/// Lets something happen at most once per interval, for all threads; not in the first interval after the
/// system's start. An interval of 0 lets everything happen.
class Throttle {
 public:
  explicit constexpr Throttle(DWORD intervalMs) : m_intervalMs(intervalMs) {}

  bool Pass() {
    if (m_intervalMs == 0) return true;
    const DWORD now = GetTickCount();
    DWORD last = m_lastTick;
    return now - last > m_intervalMs && m_lastTick.compare_exchange_strong(last, now);
  }

 private:
  DWORD m_intervalMs;
  std::atomic<DWORD> m_lastTick{0};
};

/// For failures that every frame of every pane may meet.
constexpr DWORD kErrorIntervalMs = 1000;

/// Tells of calls into a graphics interface that failed, in the words of the backend. Any thread; a global
/// object per backend or place, since panes share the interval.
class ErrorReporter {
 public:
  /// Writes of a failed operation; `code` is the interface's, where it gives one.
  using Write = void (*)(const char* operation, long code);

  constexpr ErrorReporter(Write write, DWORD intervalMs) : m_write(write), m_throttle(intervalMs) {}

  void Failed(const char* operation, long code = 0) {
    if (m_throttle.Pass()) m_write(operation, code);
  }

 private:
  Write m_write;
  Throttle m_throttle;
};

}  // namespace libnivral
