// SPDX-License-Identifier: MIT
// What the log asks of the system: clock, host program, folders and files.
#pragma once

#include <windows.h>

#include <cstdint>
#include <span>
#include <string_view>

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

/// Appends `line` to a file that other processes may be appending to as well. False when it was not written.
bool AppendToSharedFile(HANDLE file, std::string_view line);

/// Writes `line` to the standard output as it is; nothing happens in a program that has none.
void EchoToStandardOutput(std::string_view line);

/// Converts to the ANSI code page with a terminator and returns the length without it; text that does not fit
/// is cut between characters.
size_t ToNarrowText(std::wstring_view text, std::span<char> out);

}  // namespace libnivral
