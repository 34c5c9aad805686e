// SPDX-License-Identifier: MIT
#include "roads/process_clock.h"

#include <windows.h>

namespace {

double Milliseconds(const FILETIME& time) {
  return static_cast<double>((ULONGLONG{time.dwHighDateTime} << 32 | time.dwLowDateTime)) / 1e4;
}

}  // namespace

Spent ProcessClock::Now() {
  LARGE_INTEGER ticks, frequency;
  QueryPerformanceCounter(&ticks);
  QueryPerformanceFrequency(&frequency);
  FILETIME created, ended, kernel, user;
  GetProcessTimes(GetCurrentProcess(), &created, &ended, &kernel, &user);
  return {static_cast<double>(ticks.QuadPart) * 1e3 / static_cast<double>(frequency.QuadPart),
          Milliseconds(kernel) + Milliseconds(user)};
}

Spent ProcessClock::Elapsed() const {
  const Spent now = Now();
  return {now.wall - m_start.wall, now.process - m_start.process};
}
