// SPDX-License-Identifier: MIT
#include "util/log_format.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>

namespace libnivral {
namespace {

// Of the 10240 bytes of a line, what a message and its dump may fill.
constexpr size_t kDumpRoom = 10176;
constexpr size_t kDumpTerminator = 2;

using FileStamp = std::array<wchar_t, 80>;

/// Digits are the same in wide text, so the narrow formatter, which is alike everywhere, does the work.
std::wstring_view FormatFileStamp(FileStamp& out, const LogTime& time) {
  char text[std::tuple_size_v<FileStamp>];
  const int length = std::snprintf(text, sizeof(text), "%4d-%02d-%02d %02d-%02d-%02d", time.year, time.month,
                                   time.day, time.hour, time.minute, time.second);
  std::copy_n(text, length, out.begin());
  return {out.data(), static_cast<size_t>(length)};
}

}  // namespace

ProgramPlace SplitProgramPath(std::wstring_view path) {
  const size_t slash = path.rfind(L'\\');
  const size_t nameStart = slash == std::wstring_view::npos ? 0 : slash + 1;
  const std::wstring_view file = path.substr(nameStart);
  return {path.substr(0, nameStart), file.substr(0, file.rfind(L'.'))};
}

size_t FormatLogLine(std::span<char> out, const LogTime& time, int32_t threadId, std::string_view message) {
  constexpr std::string_view kEnd = "\r\n";
  const int stamp =
      std::snprintf(out.data(), out.size(), "%04d-%02d-%02d   %02d:%02d:%02d    [% 5d] ", time.year,
                    time.month, time.day, time.hour, time.minute, time.second, threadId);
  const auto used = static_cast<size_t>(stamp);
  const size_t kept = std::min(message.size(), out.size() - used - kEnd.size() - 1);
  std::memcpy(out.data() + used, message.data(), kept);
  std::memcpy(out.data() + used + kept, kEnd.data(), kEnd.size());
  out[used + kept + kEnd.size()] = '\0';
  return used + kept + kEnd.size();
}

bool JoinText(std::span<wchar_t> out, std::initializer_list<std::wstring_view> parts) {
  size_t used = 0;
  out[0] = L'\0';
  for (const std::wstring_view part : parts) {
    if (part.size() >= out.size() - used) {
      out[0] = L'\0';
      return false;
    }
    std::copy(part.begin(), part.end(), out.begin() + static_cast<ptrdiff_t>(used));
    used += part.size();
    out[used] = L'\0';
  }
  return true;
}

bool FormatLogPath(std::span<wchar_t> out, std::wstring_view folder, std::wstring_view name,
                   const LogTime& opened, const LogTime& now) {
  FileStamp first;
  FileStamp second;
  return JoinText(out, {folder, name, L"----", FormatFileStamp(first, opened), L"----",
                        FormatFileStamp(second, now), L".log"});
}

size_t AppendHexDump(std::span<wchar_t> message, size_t length, std::span<const uint8_t> bytes) {
  constexpr wchar_t kDigits[] = L"0123456789ABCDEF";
  message[length++] = L' ';
  message[length++] = L' ';
  const size_t taken = length + kDumpTerminator;
  const size_t room = taken < kDumpRoom ? (kDumpRoom - taken) / 2 : 0;
  for (const uint8_t byte : bytes.first(std::min(bytes.size(), room))) {
    message[length++] = kDigits[byte >> 4];
    message[length++] = kDigits[byte & 15];
  }
  message[length] = L'\0';
  return length;
}

}  // namespace libnivral
