// SPDX-License-Identifier: MIT
#include "util/log_system.h"

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

}  // namespace libnivral
