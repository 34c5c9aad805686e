// SPDX-License-Identifier: MIT
// The host program of the log tests: log_writer <task> [arguments]. The tests copy it into a folder of its
// own, because the log lies beside its host.
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "support/crash_report.h"
#include "support/import_patch.h"
#include "util/log_file.h"

namespace {

CLogFile* Log() {
  return CLogFile::GetInstance();
}

SYSTEMTIME g_localTime{2024, 5, 3, 17, 12, 34, 56, 0};
ULONGLONG g_sinceBoot = 3'600'000;

void WINAPI TellLocalTime(SYSTEMTIME* time) {
  *time = g_localTime;
}

ULONGLONG WINAPI TellTimeSinceBoot() {
  return g_sinceBoot;
}

/// Leaves the tick count as the only clock.
FARPROC WINAPI FindAllButTheSystemClock(HMODULE module, const char* name) {
  if (!std::strcmp(name, "NtQuerySystemInformation")) return nullptr;
  return RealFunction<decltype(GetProcAddress)>("kernel32.dll", "GetProcAddress")(module, name);
}

/// Every way to write, the arguments that must do nothing, and texts that do not fit.
void WriteEntries() {
  const uint8_t bytes[] = {0x00, 0x7F, 0xAB, 0xFF, 0x10};
  const std::wstring tooLong(30000, L'w');
  Log()->Write(2, L"wide %d %s", 7, L"text \x00E9");
  Log()->Write(1, L"below the level");
  Log()->WriteA(1, "below the level");
  Log()->WriteA(3, "narrow %d %s %%", 8, "text");
  Log()->WriteHex(2, bytes, 5, L"hex %u", 9U);
  Log()->WriteHex(2, bytes, -1, L"none");
  Log()->WriteHex(2, nullptr, 5, L"null");
  Log()->WriteText(2, L"as it is: %d %s");
  Log()->Write(2, nullptr);
  Log()->WriteA(2, nullptr);
  Log()->WriteHex(2, bytes, 5, nullptr);
  Log()->WriteText(2, nullptr);
  Log()->SetName(nullptr);
  Log()->Write(2, L"%s", tooLong.c_str());
  Log()->WriteA(2, "%s", std::string(30000, 'n').c_str());
  Log()->WriteHex(2, bytes, 5, L"%s", tooLong.c_str());
  Log()->WriteText(2, tooLong.c_str());
  Log()->WriteText(2, L"last");
}

void WriteTwoFiles() {
  Log()->SetName(L"first");
  Log()->WriteText(2, L"one");
  CLogFile::DestroyInstance();
  CLogFile::DestroyInstance();
  Log()->SetName(L"first");
  Log()->WriteText(2, L"two");
  CLogFile::DestroyInstance();
  Log()->SetName(std::wstring(5000, L'n').c_str());
  Log()->WriteText(2, L"nowhere");
}

void WriteLevels() {
  for (const int level : {-1, 0, 1, 2, 3})
    Log()->Write(level, L"level %d", level);
}

/// A hundred and three lines of the greatest length end just above the limit.
void WritePastTheLimit() {
  const std::wstring message(10239, L'm');
  for (int i = 0; i < 103; ++i)
    Log()->WriteText(2, message.c_str());
  ++g_localTime.wSecond;
  Log()->WriteText(2, L"next");
}

void WriteFromThreads(const std::wstring& process, const wchar_t* startEvent) {
  Log();
  const HANDLE start = OpenEventW(SYNCHRONIZE, FALSE, startEvent);
  const std::wstring readyName = std::wstring(startEvent) + L" ready";
  const HANDLE ready = OpenSemaphoreW(SEMAPHORE_MODIFY_STATE, FALSE, readyName.c_str());
  if (!start || !ready) std::exit(2);
  ReleaseSemaphore(ready, 1, nullptr);
  std::vector<std::jthread> threads;
  for (int thread = 0; thread < 4; ++thread)
    threads.emplace_back([&process, start, thread] {
      WaitForSingleObject(start, INFINITE);
      for (int i = 0; i < 300; ++i)
        Log()->Write(2, L"<%s %d %d>", process.c_str(), thread, i);
    });
}

/// A file is where the folder should be until the second line.
void WriteThroughObstacle() {
  Log()->WriteText(2, L"lost");
  Log()->WriteText(2, L"lost");
  DeleteFileW(L"Log");
  Log()->WriteText(2, L"kept");
}

DWORD WINAPI WriteForEver(void* log) {
  for (;;)
    static_cast<CLogFile*>(log)->WriteText(2, L"x");
}

/// A thread that is stopped while it writes holds the lock for ever, like one that the end of the process
/// ended. Destroying the log must not wait for it.
void DestroyUnderWriters() {
  for (int round = 0; round < 5; ++round) {
    const HANDLE writer = CreateThread(nullptr, 0, &WriteForEver, Log(), 0, nullptr);
    Sleep(20);
    SuspendThread(writer);
    CLogFile::DestroyInstance();
  }
  Log()->WriteText(2, L"alive");
}

/// Between the first line and the last one the settings change.
void WriteDetailForAMinute() {
  Log()->WriteText(2, L"start");
  WritePrivateProfileStringW(L"LOG", L"LEVEL", L"1", L".\\LOG.INI");
  for (const ULONGLONG ms : {30'000, 29'999, 1, 1}) {
    g_sinceBoot += ms;
    Log()->Write(1, L"%d", static_cast<int>(g_sinceBoot % 3'600'000));
  }
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  InstallCrashReport();
  const std::map<std::wstring, std::function<void()>> tasks{
      {L"entries", WriteEntries},
      {L"files", WriteTwoFiles},
      {L"levels", WriteLevels},
      {L"limit", WritePastTheLimit},
      {L"threads", [argv] { WriteFromThreads(argv[2], argv[3]); }},
      {L"obstacle", WriteThroughObstacle},
      {L"destroy", DestroyUnderWriters},
      {L"minute", WriteDetailForAMinute},
  };
  const ImportPatch localTime("kernel32.dll", "GetLocalTime", &TellLocalTime);
  const ImportPatch sinceBoot("kernel32.dll", "GetTickCount64", &TellTimeSinceBoot);
  const ImportPatch noOther("kernel32.dll", "GetProcAddress", &FindAllButTheSystemClock);
  const auto task = argc > 1 ? tasks.find(argv[1]) : tasks.end();
  if (task == tasks.end()) return 1;
  task->second();
  return 0;
}
