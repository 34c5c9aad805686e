// SPDX-License-Identifier: MIT
#include "backends/ddraw/ddraw_error.h"

#include <ddraw.h>

#include "util/error_reporter.h"
#include "util/log_file.h"

namespace libnivral {
namespace {

void Write(const char* operation, long code) {
  CLogFile::GetInstance()->WriteA(1, "CDirectDraw::%s failed, hr=0x%08lx", operation,
                                  static_cast<unsigned long>(code));
}

ErrorReporter g_errors(&Write, kErrorIntervalMs);

}  // namespace

bool IsLost(HRESULT result) {
  return result == DDERR_SURFACELOST || result == DDERR_WRONGMODE;
}

HRESULT LogFailure(const char* operation, HRESULT result) {
  if (FAILED(result) && !IsLost(result)) g_errors.Failed(operation, result);
  return result;
}

}  // namespace libnivral
