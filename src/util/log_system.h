// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <cstdint>

#include "util/log_format.h"

namespace libnivral {

/// Milliseconds since the system was booted, wrapping. A system call; any thread.
uint32_t MillisecondsSinceBoot();

/// Where the host program lies, found on first use and kept; both parts are empty when its path is longer
/// than Windows' usual limit.
const ProgramPlace& HostProgram();

/// Makes the folder and its parents; `folder` is changed during the call and as before after it.
void MakeFolder(wchar_t* folder);

/// Deletes files of `folder` (with its trailing backslash) in listing order until they fill less than
/// `budget` bytes.
void TrimFolder(const wchar_t* folder, uint64_t budget);

}  // namespace libnivral
