// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <atomic>

/// Sends "<operation>: SDL_GetError = <text>" to the log at `level` and to the debugger, there under another
/// name when one is given.
void ReportSdlError(int level, const char* operation, const char* debuggerOperation = nullptr);

/// Lets something happen at most once per interval, for all threads; not in the first interval after the
/// system's start.
class Throttle {
 public:
  explicit constexpr Throttle(DWORD intervalMs) : m_intervalMs(intervalMs) {}

  bool Pass() {
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
