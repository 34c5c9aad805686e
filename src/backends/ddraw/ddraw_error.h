// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>
// Keeps the order: ddraw.h needs windows.h.
#include <ddraw.h>

#include "util/error_reporter.h"
#include "util/log_file.h"

namespace libnivral {

/// Writes "CDirectDraw::<operation> failed" with the result to the log, at most once a second.
inline ErrorReporter g_ddrawErrors(
    [](const char* operation, long code) {
      CLogFile::GetInstance()->WriteA(1, "CDirectDraw::%s failed, hr=0x%08lx", operation,
                                      static_cast<unsigned long>(code));
    },
    kErrorIntervalMs);

/// Whether surfaces have to be restored before the call can succeed.
inline bool IsLost(HRESULT result) {
  return result == DDERR_SURFACELOST || result == DDERR_WRONGMODE;
}

/// Reports a failed DirectDraw call and hands the result back. A lost surface is a state that the next
/// attempt repairs and is not reported.
inline HRESULT LogFailure(const char* operation, HRESULT result) {
  if (FAILED(result) && !IsLost(result)) g_ddrawErrors.Failed(operation, result);
  return result;
}

}  // namespace libnivral
