// SPDX-License-Identifier: MIT
#pragma once

/// Sends "<operation>: SDL_GetError = <text>" to the log at `level` and to the debugger.
void ReportSdlError(int level, const char* operation);
