// SPDX-License-Identifier: MIT
// The texts of the log on plain memory: lines, hexadecimal dumps, file names.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string_view>

namespace libnivral {

/// A local date and time to the second.
struct LogTime {
  int year;
  int month;
  int day;
  int hour;
  int minute;
  int second;
};

/// The folder of a program with its trailing backslash, and its name without folder and extension. Views into
/// the path they were made from.
struct ProgramPlace {
  std::wstring_view folder;
  std::wstring_view name;
};

ProgramPlace SplitProgramPath(std::wstring_view path);

/// Writes time stamp, thread id, message and CR LF with a terminator into `out` and returns the length
/// without it. A message that does not fit is cut; the line ends with CR LF all the same. `out` holds at
/// least 80 bytes.
size_t FormatLogLine(std::span<char> out, const LogTime& time, int32_t threadId, std::string_view message);

/// Joins `parts` into `out` with a terminator. False, and an empty text, when they do not fit: half a path is
/// the path of something else.
bool JoinText(std::span<wchar_t> out, std::initializer_list<std::wstring_view> parts);

/// The path of a log file from its folder, its name's prefix and its two time stamps; false as for JoinText.
bool FormatLogPath(std::span<wchar_t> out, std::wstring_view folder, std::wstring_view name,
                   const LogTime& opened, const LogTime& now);

/// Appends two blanks and the bytes as pairs of upper-case hexadecimal digits to the `length` characters in
/// `message`, as many as leave a line room for its stamp. Returns the new length. `message` holds the text,
/// the blanks and a terminator at least.
size_t AppendHexDump(std::span<wchar_t> message, size_t length, std::span<const uint8_t> bytes);

}  // namespace libnivral
