// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <span>
#include <string_view>

namespace libnivral {

/// Appends `line` to a file that other processes may be appending to as well. False when it was not written.
bool AppendToSharedFile(HANDLE file, std::string_view line);

/// Writes `line` to the standard output as it is; nothing happens in a program that has none.
void EchoToStandardOutput(std::string_view line);

/// Converts to the ANSI code page with a terminator and returns the length without it; text that does not fit
/// is cut between characters.
size_t ToNarrowText(std::wstring_view text, std::span<char> out);

}  // namespace libnivral
