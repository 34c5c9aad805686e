// SPDX-License-Identifier: MIT
#pragma once

#include "util/error_reporter.h"

namespace libnivral {

/// Writes "D3DDisplayer::<operation> failed" to the log, each time.
extern ErrorReporter g_d3dErrors;

}  // namespace libnivral
