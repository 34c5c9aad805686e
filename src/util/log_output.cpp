// SPDX-License-Identifier: MIT
#include "util/log_output.h"

#include <algorithm>

namespace libnivral {
namespace {

/// Holds a byte range far behind the end of the file against other processes, so that one appends at a time
/// and readers are not hindered. Gives up after a while, and then for some seconds at once: a process that is
/// halted while it holds the range must not halt this one. A file system without locks is not waited for.
class AppendLock {
 public:
  explicit AppendLock(HANDLE file) : m_file(file) {
    const ULONGLONG start = GetTickCount64();
    if (start < s_impatientUntil) {
      m_held = TryTake();
      return;
    }
    while (!(m_held = TryTake()) && GetLastError() == ERROR_LOCK_VIOLATION) {
      if (GetTickCount64() - start >= kLimitMs) {
        s_impatientUntil = GetTickCount64() + kImpatientMs;
        return;
      }
      Sleep(0);
    }
  }
  ~AppendLock() {
    OVERLAPPED range = Range();
    if (m_held) UnlockFileEx(m_file, 0, 1, 0, &range);
  }
  AppendLock(const AppendLock&) = delete;
  AppendLock& operator=(const AppendLock&) = delete;

 private:
  static constexpr ULONGLONG kLimitMs = 200;
  static constexpr ULONGLONG kImpatientMs = 5000;
  static inline ULONGLONG s_impatientUntil = 0;  ///< written under the log's own lock

  static OVERLAPPED Range() {
    OVERLAPPED range{};
    range.OffsetHigh = 0x40000000;
    return range;
  }
  bool TryTake() const {
    OVERLAPPED range = Range();
    return LockFileEx(m_file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &range);
  }

  HANDLE m_file;
  bool m_held = false;
};

/// Narrows `text` and returns the bytes, 0 when they do not fit.
size_t Narrow(std::wstring_view text, std::span<char> out) {
  return static_cast<size_t>(WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(text.size()),
                                                 out.data(), static_cast<int>(out.size()), nullptr, nullptr));
}

bool IsHighSurrogate(wchar_t unit) {
  return (unit & 0xFC00) == 0xD800;
}

}  // namespace

bool AppendToSharedFile(HANDLE file, std::string_view line) {
  const AppendLock turn(file);
  // This offset means the end of the file at the moment of the write.
  OVERLAPPED atEnd{};
  atEnd.Offset = atEnd.OffsetHigh = 0xFFFFFFFF;
  DWORD written = 0;
  return WriteFile(file, line.data(), static_cast<DWORD>(line.size()), &written, &atEnd);
}

void EchoToStandardOutput(std::string_view line) {
  const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
  if (!output || output == INVALID_HANDLE_VALUE) return;
  DWORD written = 0;
  WriteFile(output, line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
}

size_t ToNarrowText(std::wstring_view text, std::span<char> out) {
  std::span<char> room = out.first(out.size() - 1);
  // In pieces: a conversion that does not fit as a whole leaves nothing defined behind.
  size_t piece = text.size();
  while (!text.empty() && !room.empty() && piece > 0) {
    piece = std::min(piece, text.size());
    if (piece < text.size() && piece > 1 && IsHighSurrogate(text[piece - 1])) --piece;
    const size_t bytes = Narrow(text.substr(0, piece), room);
    if (bytes == 0) {
      piece /= 2;
      continue;
    }
    text.remove_prefix(piece);
    room = room.subspan(bytes);
  }
  const size_t length = out.size() - 1 - room.size();
  out[length] = '\0';
  return length;
}

}  // namespace libnivral
