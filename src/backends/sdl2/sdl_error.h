// SPDX-License-Identifier: MIT
#pragma once

#include "util/error_reporter.h"

namespace libnivral {

/// Sends "<operation>: SDL_GetError = <text>" to the log at `level` and to the debugger, there under another
/// name when one is given.
void WriteSdlError(int level, const char* operation, const char* debuggerOperation = nullptr);

/// The set-up's failed steps, each told of, and frames that failed, of all panes together one a second.
extern ErrorReporter g_sdlErrors;
extern ErrorReporter g_sdlFrameErrors;

}  // namespace libnivral
