// SPDX-License-Identifier: MIT
#include "util/log_system.h"

#include <algorithm>
#include <cwchar>

#include "util/log_rules.h"
#include "util/win_handles.h"

namespace libnivral {
namespace {

/// What class 3 of NtQuerySystemInformation fills; times in units of 100 ns.
struct TimeOfDay {
  LARGE_INTEGER bootTime;
  LARGE_INTEGER currentTime;
  LARGE_INTEGER zoneBias;
  ULONG zoneId;
  ULONG reserved;
};
static_assert(sizeof(TimeOfDay) == 32);
constexpr ULONG kTimeOfDayClass = 3;
constexpr LONGLONG kUnitsPerMs = 10000;

using QuerySystemInformation = LONG(NTAPI*)(ULONG, void*, ULONG, ULONG*);

QuerySystemInformation FindQuery() {
  const HMODULE ntdll = GetModuleHandleW(L"ntdll.dll");
  const FARPROC found = ntdll ? GetProcAddress(ntdll, "NtQuerySystemInformation") : nullptr;
  // By way of void*: the compilers warn of a cast between unlike function types.
  return reinterpret_cast<QuerySystemInformation>(reinterpret_cast<void*>(found));
}

using PathText = wchar_t[MAX_PATH];

bool Fits(DWORD length) {
  return length > 0 && length < MAX_PATH;
}

/// The host may have been started by its short (8.3) name.
bool ReadHostPath(PathText& path) {
  PathText asStarted{};
  if (!Fits(GetModuleFileNameW(nullptr, asStarted, MAX_PATH))) return false;
  if (!Fits(GetLongPathNameW(asStarted, path, MAX_PATH))) std::wcscpy(path, asStarted);
  return true;
}

template <class Visit>
void ForEachFile(const wchar_t* folder, Visit visit) {
  PathText pattern;
  if (!JoinText(pattern, {folder, L"*.*"})) return;
  WIN32_FIND_DATAW data;
  const HANDLE handle = FindFirstFileW(pattern, &data);
  if (handle == INVALID_HANDLE_VALUE) return;
  const UniqueFind search(handle);
  do {
    const bool isFolder = data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY;
    if (!isFolder && !visit(data.cFileName, data.nFileSizeLow)) return;
  } while (FindNextFileW(handle, &data));
}

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

uint32_t MillisecondsSinceBoot() {
  static const QuerySystemInformation query = FindQuery();
  TimeOfDay time{};
  if (query && query(kTimeOfDayClass, &time, sizeof(time), nullptr) >= 0)
    return static_cast<uint32_t>((time.currentTime.QuadPart - time.bootTime.QuadPart) / kUnitsPerMs);
  return static_cast<uint32_t>(GetTickCount64());
}

const ProgramPlace& HostProgram() {
  static PathText path;
  static const ProgramPlace place = ReadHostPath(path) ? SplitProgramPath(path) : ProgramPlace{};
  return place;
}

void MakeFolder(wchar_t* folder) {
  if (GetFileAttributesW(folder) != INVALID_FILE_ATTRIBUTES) return;
  if (wchar_t* slash = std::wcsrchr(folder, L'\\')) {
    *slash = L'\0';
    MakeFolder(folder);
    *slash = L'\\';
  }
  CreateDirectoryW(folder, nullptr);
}

void TrimFolder(const wchar_t* folder, uint64_t budget) {
  TrimToBudget([folder](auto visit) { ForEachFile(folder, visit); },
               [folder](const wchar_t* name) {
                 PathText path;
                 return JoinText(path, {folder, name}) && DeleteFileW(path);
               },
               budget);
}

bool AppendToSharedFile(HANDLE file, std::string_view line) {
  const AppendLock lock(file);
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
