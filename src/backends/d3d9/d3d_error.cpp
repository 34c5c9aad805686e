// SPDX-License-Identifier: MIT
#include "backends/d3d9/d3d_error.h"

#include "util/log_file.h"

namespace libnivral {

ErrorReporter g_d3dErrors(
    [](const char* operation, long) {
      CLogFile::GetInstance()->WriteA(1, "D3DDisplayer::%s failed", operation);
    },
    0);

}  // namespace libnivral
