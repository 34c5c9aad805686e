// SPDX-License-Identifier: MIT
#include "util/log_clock.h"

#include <windows.h>

namespace {

/// What class 3 of NtQuerySystemInformation fills; times in units of 100 ns.
struct TimeOfDay {
  LARGE_INTEGER bootTime;
  LARGE_INTEGER currentTime;
  LARGE_INTEGER zoneBias;
  ULONG zoneId;
  ULONG reserved;
};
static_assert(sizeof(TimeOfDay) == 32);
constexpr ULONG kTimeOfDayClass = 3;
constexpr LONGLONG kUnitsPerMs = 10000;

using QuerySystemInformation = LONG(NTAPI*)(ULONG, void*, ULONG, ULONG*);

QuerySystemInformation FindQuery() {
  const HMODULE ntdll = GetModuleHandleW(L"ntdll.dll");
  const FARPROC found = ntdll ? GetProcAddress(ntdll, "NtQuerySystemInformation") : nullptr;
  // By way of void*: the compilers warn of a cast between unlike function types.
  return reinterpret_cast<QuerySystemInformation>(reinterpret_cast<void*>(found));
}

}  // namespace

uint32_t MillisecondsSinceBoot() {
  static const QuerySystemInformation query = FindQuery();
  TimeOfDay time{};
  if (query && query(kTimeOfDayClass, &time, sizeof(time), nullptr) >= 0)
    return static_cast<uint32_t>((time.currentTime.QuadPart - time.bootTime.QuadPart) / kUnitsPerMs);
  return static_cast<uint32_t>(GetTickCount64());
}
