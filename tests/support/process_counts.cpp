// SPDX-License-Identifier: MIT
// GetProcessHandleCount and PrivateUsage always give 0 under Wine, so everything here is counted by walking.
#include "support/process_counts.h"

#include <windows.h>

#include <gtest/gtest.h>
#include <tlhelp32.h>
#include <winternl.h>

#include <sstream>
#include <vector>

#include "support/wait.h"

namespace {

constexpr auto kSystemHandleInformation = static_cast<SYSTEM_INFORMATION_CLASS>(16);
constexpr NTSTATUS kBufferTooSmall = static_cast<NTSTATUS>(0xC0000004);

int CountHandles() {
  std::vector<ULONG_PTR> buffer(1 << 14);
  ULONG needed = 0;
  while (NtQuerySystemInformation(kSystemHandleInformation, buffer.data(),
                                  static_cast<ULONG>(buffer.size() * sizeof(ULONG_PTR)),
                                  &needed) == kBufferTooSmall)
    buffer.resize(buffer.size() * 2);
  const auto* table = reinterpret_cast<const SYSTEM_HANDLE_INFORMATION*>(buffer.data());
  int count = 0;
  for (ULONG i = 0; i < table->Count; ++i)
    count += table->Handle[i].OwnerPid == GetCurrentProcessId();
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

ProcessCounts CountProcess() {
  return {CountThreads(), CountHandles(), CountHeaps(), CountGdiObjects(), CountWindows()};
}

std::string Tell(const ProcessCounts& c) {
  std::ostringstream text;
  text << c.threads << " threads, " << c.handles << " handles, " << c.heapBytes << " heap bytes, "
       << c.gdiObjects << " GDI objects, " << c.windows << " windows";
  return text.str();
}

}  // namespace

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

ProcessCounts CountSettledProcess() {
  Pump(300);
  return CountProcess();
}

void ExpectNoGrowth(const ProcessCounts& before, size_t heapSlack) {
  ProcessCounts after{};
  EXPECT_TRUE(WaitUntil([&] {
    after = CountSettledProcess();
    return after.threads <= before.threads && after.handles <= before.handles + 2 &&
           after.heapBytes <= before.heapBytes + heapSlack && after.gdiObjects <= before.gdiObjects + 1 &&
           after.windows <= before.windows;
  })) << Tell(before)
      << " -> " << Tell(after);
}
