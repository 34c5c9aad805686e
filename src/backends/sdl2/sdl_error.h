// SPDX-License-Identifier: MIT
#pragma once

/// Sends "<operation>: SDL_GetError = <text>" to the log at `level` and to the debugger, there under another
/// name when one is given.
void ReportSdlError(int level, const char* operation, const char* debuggerOperation = nullptr);
