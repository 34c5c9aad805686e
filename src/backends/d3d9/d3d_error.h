// SPDX-License-Identifier: MIT
#pragma once

#include "util/error_reporter.h"
#include "util/log_file.h"

namespace libnivral {

/// Writes "D3DDisplayer::<operation> failed" to the log, each time.
inline ErrorReporter g_d3dErrors(
    [](const char* operation, long) {
      CLogFile::GetInstance()->WriteA(1, "D3DDisplayer::%s failed", operation);
    },
    0);

}  // namespace libnivral
