// SPDX-License-Identifier: MIT
// A crash on any thread prints its code and stack as module+offset and ends the process with exit code 99, which an
// unhandled exception under Wine does not do reliably.
#include "support/crash_report.h"

#include <gmock/gmock.h>
#include <windows.h>

#include <cstdio>
#include <cstdlib>

#include "support/process_counts.h"

namespace {

constexpr UINT kCrashExitCode = 99;

void PrintAddress(const void* address) {
  HMODULE module = nullptr;
  char name[MAX_PATH] = "?";
  GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                     static_cast<const char*>(address), &module);
  if (module) GetModuleFileNameA(module, name, sizeof(name));
  const auto offset = reinterpret_cast<ULONG_PTR>(address) - reinterpret_cast<ULONG_PTR>(module);
  std::fprintf(stderr, "  %s+0x%llx\n", name, static_cast<unsigned long long>(offset));
}

[[noreturn]] void PrintStackAndEnd() {
  void* frames[32];
  const USHORT count = RtlCaptureStackBackTrace(0, 32, frames, nullptr);
  for (USHORT i = 0; i < count; ++i)
    PrintAddress(frames[i]);
  std::fflush(stderr);
  TerminateProcess(GetCurrentProcess(), kCrashExitCode);
  std::abort();
}

LONG WINAPI Report(EXCEPTION_POINTERS* info) {
  std::fprintf(stderr, "crash: exception 0x%08lx\n", info->ExceptionRecord->ExceptionCode);
  PrintAddress(info->ExceptionRecord->ExceptionAddress);
  PrintStackAndEnd();
}

/// Wine 8 crashes now and then when a process ends while another of its threads is ending, as Direct3D's is
/// after its last device.
void LetThreadsEnd(int usual) {
  for (int i = 0; i < 100 && CountThreads() > usual; ++i)
    Sleep(10);
}

}  // namespace

void ReportAbort() {
  std::fprintf(stderr, "crash: abort\n");
  PrintStackAndEnd();
}

int main(int argc, char** argv) {
  SetUnhandledExceptionFilter(&Report);
  testing::InitGoogleMock(&argc, argv);
  const int threads = CountThreads();
  const int result = RUN_ALL_TESTS();
  LetThreadsEnd(threads);
  return result;
}
