// SPDX-License-Identifier: MIT
// GetProcessHandleCount and PrivateUsage always give 0 under Wine, so everything here is counted by walking.
#include "support/process_counts.h"

#include <windows.h>

#include <gtest/gtest.h>
#include <tlhelp32.h>
#include <winternl.h>

#include <ostream>
#include <vector>

namespace {

constexpr auto kSystemHandleInformation = static_cast<SYSTEM_INFORMATION_CLASS>(16);
constexpr NTSTATUS kBufferTooSmall = static_cast<NTSTATUS>(0xC0000004);

struct HandleEntry {
  ULONG processId;
  BYTE type;
  BYTE flags;
  USHORT value;
  void* object;
  ULONG access;
};

struct HandleTable {
  ULONG count;
  HandleEntry entries[1];
};

int CountHandles() {
  using Query = NTSTATUS(NTAPI*)(SYSTEM_INFORMATION_CLASS, void*, ULONG, ULONG*);
  static const auto query = reinterpret_cast<Query>(reinterpret_cast<ULONG_PTR>(
      GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQuerySystemInformation")));
  std::vector<ULONG_PTR> buffer(1 << 14);
  ULONG needed = 0;
  while (query(kSystemHandleInformation, buffer.data(), static_cast<ULONG>(buffer.size() * sizeof(ULONG_PTR)),
               &needed) == kBufferTooSmall)
    buffer.resize(buffer.size() * 2);
  const auto* table = reinterpret_cast<const HandleTable*>(buffer.data());
  int count = 0;
  for (ULONG i = 0; i < table->count; ++i)
    count += table->entries[i].processId == GetCurrentProcessId();
  return count;
}

int CountThreads() {
  const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
  THREADENTRY32 entry{};
  entry.dwSize = sizeof(entry);
  int count = 0;
  for (BOOL more = Thread32First(snapshot, &entry); more; more = Thread32Next(snapshot, &entry))
    count += entry.th32OwnerProcessID == GetCurrentProcessId();
  CloseHandle(snapshot);
  return count;
}

size_t CountHeap(HANDLE heap) {
  size_t bytes = 0;
  HeapLock(heap);
  PROCESS_HEAP_ENTRY entry{};
  while (HeapWalk(heap, &entry))
    if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) bytes += entry.cbData;
  HeapUnlock(heap);
  return bytes;
}

size_t CountHeaps() {
  std::vector<HANDLE> heaps(GetProcessHeaps(0, nullptr));
  heaps.resize(GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data()));
  size_t bytes = 0;
  for (const HANDLE heap : heaps)
    bytes += CountHeap(heap);
  return bytes;
}

/// Counts entries in use of the table that the process environment block points to.
int CountGdiObjects() {
  constexpr size_t kTableInPeb = 0xF8;
  constexpr size_t kEntries = 65536;
  constexpr size_t kEntrySize = 24;
  constexpr size_t kTypeInEntry = 14;
  PROCESS_BASIC_INFORMATION process{};
  NtQueryInformationProcess(GetCurrentProcess(), ProcessBasicInformation, &process, sizeof(process), nullptr);
  const auto* peb = reinterpret_cast<const std::byte*>(process.PebBaseAddress);
  const auto* table = *reinterpret_cast<const std::byte* const*>(peb + kTableInPeb);
  int count = 0;
  for (size_t i = 0; table && i < kEntries; ++i)
    count += std::to_integer<int>(table[i * kEntrySize + kTypeInEntry]) != 0;
  return count;
}

BOOL CALLBACK CountWindow(HWND, LPARAM count) {
  ++*reinterpret_cast<int*>(count);
  return TRUE;
}

int CountWindows() {
  int count = 0;
  EnumThreadWindows(GetCurrentThreadId(), &CountWindow, reinterpret_cast<LPARAM>(&count));
  return count;
}

}  // namespace

ProcessCounts CountProcess() {
  return {CountThreads(), CountHandles(), CountHeaps(), CountGdiObjects(), CountWindows()};
}

ProcessCounts CountSettledProcess() {
  Sleep(300);
  return CountProcess();
}

void PrintTo(const ProcessCounts& c, std::ostream* out) {
  *out << c.threads << " threads, " << c.handles << " handles, " << c.heapBytes << " heap bytes, "
       << c.gdiObjects << " GDI objects, " << c.windows << " windows";
}

bool HasGrown(const ProcessCounts& before, const ProcessCounts& after, size_t heapSlack) {
  return after.threads > before.threads || after.handles > before.handles + 2 ||
         after.heapBytes > before.heapBytes + heapSlack || after.gdiObjects > before.gdiObjects + 1 ||
         after.windows > before.windows;
}

void ExpectNoGrowth(const ProcessCounts& before, const ProcessCounts& after, size_t heapSlack) {
  EXPECT_FALSE(HasGrown(before, after, heapSlack))
      << testing::PrintToString(before) << " -> " << testing::PrintToString(after);
}
