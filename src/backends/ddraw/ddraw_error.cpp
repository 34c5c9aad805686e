// SPDX-License-Identifier: MIT
#include "backends/ddraw/ddraw_error.h"

#include <ddraw.h>

#include <atomic>

#include "util/log_file.h"

namespace {

constexpr ULONGLONG kReportIntervalMs = 1000;

/// When a failure was last logged, by any pane.
std::atomic<ULONGLONG> g_lastReport{0};

}  // namespace

bool IsLost(HRESULT result) {
  return result == DDERR_SURFACELOST || result == DDERR_WRONGMODE;
}

HRESULT Reported(const char* operation, HRESULT result) {
  if (SUCCEEDED(result) || IsLost(result)) return result;
  const ULONGLONG now = GetTickCount64();
  if (now - g_lastReport.load() < kReportIntervalMs) return result;
  g_lastReport = now;
  CLogFile::GetInstance()->WriteA(1, "CDirectDraw::%s failed, hr=0x%08lx", operation,
                                  static_cast<unsigned long>(result));
  return result;
}
