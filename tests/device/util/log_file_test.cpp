// SPDX-License-Identifier: MIT
// The log of a program in a folder of the test's own, which this program pretends to be.
#include "util/log_file.h"

#include <gmock/gmock.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <thread>

#include "support/import_patch.h"
#include "support/wait.h"
#include "util/win_handles.h"

using namespace libnivral;

namespace fs = std::filesystem;

namespace {

using testing::ElementsAre;
using testing::SizeIs;

using Texts = std::vector<std::string>;

constexpr wchar_t kFolderVariable[] = L"NIVRAL_LOG_TEST";
constexpr size_t kMiB = 1 << 20;

/// The folder that the other process of a test names, or one for this process.
const fs::path& HostFolder() {
  static const fs::path folder = [] {
    const wchar_t* given = _wgetenv(kFolderVariable);
    return given ? fs::path(given)
                 : fs::temp_directory_path() / (L"nivral log " + std::to_wstring(GetCurrentProcessId()));
  }();
  return folder;
}

fs::path LogFolder() {
  return HostFolder() / L"Log" / L"Long host name";
}

/// By its short name: the log goes by the long one.
DWORD WINAPI TellProgram(HMODULE, wchar_t* path, DWORD size) {
  return GetShortPathNameW((HostFolder() / L"Long host name.exe").c_str(), path, size);
}

constexpr SYSTEMTIME kAfternoon{2024, 5, 3, 17, 12, 34, 56, 0};
SYSTEMTIME g_localTime = kAfternoon;
ULONGLONG g_sinceBoot = 0;  ///< 0 for the real time
HANDLE g_stuckIn = nullptr;

void WINAPI TellLocalTime(SYSTEMTIME* time) {
  *time = g_localTime;
}

ULONGLONG WINAPI TellTimeSinceBoot() {
  return g_sinceBoot ? g_sinceBoot
                     : RealFunction<decltype(GetTickCount64)>("kernel32.dll", "GetTickCount64")();
}

/// Leaves the tick count as the only clock.
FARPROC WINAPI FindAllButTheSystemClock(HMODULE module, const char* name) {
  if (!std::strcmp(name, "NtQuerySystemInformation")) return nullptr;
  return RealFunction<decltype(GetProcAddress)>("kernel32.dll", "GetProcAddress")(module, name);
}

/// The next writer after g_stuckIn is set never comes back.
BOOL WINAPI WriteOrStick(HANDLE file, const void* bytes, DWORD size, DWORD* written, OVERLAPPED* at) {
  if (const HANDLE stuckIn = std::exchange(g_stuckIn, nullptr)) {
    SetEvent(stuckIn);
    Sleep(INFINITE);
  }
  return RealFunction<decltype(WriteFile)>("kernel32.dll", "WriteFile")(file, bytes, size, written, at);
}

std::string Content(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void MakeFile(const fs::path& path, const std::string& content) {
  fs::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary) << content;
}

CLogFile& Log() {
  return *CLogFile::GetInstance();
}

/// The program is asked for once, at the first line of all; it is told here, whichever test is the first.
class Host : public testing::Environment {
  void SetUp() override {
    MakeFile(HostFolder() / L"Long host name.exe", "");
    const ImportPatch program("kernel32.dll", "GetModuleFileNameW", &TellProgram);
    const ImportPatch noOther("kernel32.dll", "GetProcAddress", &FindAllButTheSystemClock);
    CLogFile::GetInstance();
  }
  void TearDown() override {
    CLogFile::DestroyInstance();
    if (!_wgetenv(kFolderVariable)) fs::remove_all(HostFolder());
  }
};
[[maybe_unused]] const auto* const g_host = testing::AddGlobalTestEnvironment(new Host);

class LogFile : public testing::Test {
 protected:
  LogFile() {
    CLogFile::DestroyInstance();
    for (const wchar_t* name : {L"Log", L"LOG.INI"})
      if (!_wgetenv(kFolderVariable)) fs::remove_all(HostFolder() / name);
    g_localTime = kAfternoon;
    SetStdHandle(STD_OUTPUT_HANDLE, m_output.get());
  }
  ~LogFile() override {
    CLogFile::DestroyInstance();
    SetStdHandle(STD_OUTPUT_HANDLE, m_before);
    m_output.reset();
  }

  static void Set(const std::string& settings) {
    MakeFile(HostFolder() / L"LOG.INI", "[LOG]\r\n" + settings);
  }
  static std::string Echo() { return Content(OutputFile()); }

  static std::vector<fs::path> Files() {
    std::vector<fs::path> files;
    if (fs::exists(LogFolder()))
      for (const auto& entry : fs::directory_iterator(LogFolder()))
        if (entry.path().extension() == L".log") files.push_back(entry.path());
    std::ranges::sort(files);
    return files;
  }
  static std::string Text() {
    std::string text;
    for (const fs::path& file : Files())
      text += Content(file);
    return text;
  }
  /// The messages of the log, without what stands before them.
  static Texts Messages() {
    static const std::regex kLine(R"(2024-05-17   12:34:\d\d    \[ [ \d]{3,}\d\] )");
    const std::string text = Text();
    Texts messages;
    for (size_t start = 0, end = 0; (end = text.find("\r\n", start)) != std::string::npos; start = end + 2) {
      std::smatch prefix;
      const std::string line = text.substr(start, end - start);
      EXPECT_TRUE(std::regex_search(line, prefix, kLine, std::regex_constants::match_continuous)) << line;
      messages.push_back(line.substr(static_cast<size_t>(prefix.length())));
    }
    return messages;
  }
  static Texts MessagesOfAllLevels() {
    for (const int level : {-1, 0, 1, 2, 3})
      Log().Write(level, L"level %d", level);
    return Messages();
  }

 private:
  static fs::path OutputFile() { return HostFolder() / L"stdout.txt"; }
  static HANDLE MakeOutput() {
    return CreateFileW(OutputFile().c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                       CREATE_ALWAYS, 0, nullptr);
  }

  HANDLE m_before = GetStdHandle(STD_OUTPUT_HANDLE);
  UniqueFile m_output{MakeOutput()};
  ImportPatch m_localTime{"kernel32.dll", "GetLocalTime", &TellLocalTime};
  ImportPatch m_sinceBoot{"kernel32.dll", "GetTickCount64", &TellTimeSinceBoot};
  ImportPatch m_write{"kernel32.dll", "WriteFile", &WriteOrStick};
};

/// Every way to write, the arguments that must do nothing, and texts that do not fit.
TEST_F(LogFile, WritesAndEchoesExactLines) {
  const uint8_t bytes[] = {0x00, 0x7F, 0xAB, 0xFF, 0x10};
  const std::wstring tooLong(30000, L'w');
  Log().Write(2, L"wide %d %s", 7, L"text \x00E9");
  Log().Write(1, L"below the level");
  Log().WriteA(1, "below the level");
  Log().WriteA(3, "narrow %d %s %%", 8, "text");
  Log().WriteHex(2, bytes, 5, L"hex %u", 9U);
  Log().WriteHex(2, bytes, -1, L"none");
  Log().WriteHex(2, nullptr, 5, L"null");
  Log().WriteText(2, L"as it is: %d %s");
  Log().Write(2, nullptr);
  Log().WriteA(2, nullptr);
  Log().WriteHex(2, bytes, 5, nullptr);
  Log().WriteText(2, nullptr);
  Log().SetName(nullptr);
  Log().Write(2, L"%s", tooLong.c_str());
  Log().WriteA(2, "%s", std::string(30000, 'n').c_str());
  Log().WriteHex(2, bytes, 5, L"%s", tooLong.c_str());
  Log().WriteText(2, tooLong.c_str());
  Log().WriteText(2, L"last");
  // What a line of 10239 bytes leaves beside stamp, thread id and line end.
  const size_t longest = 10239 - std::string("2024-03-07   08:05:09    [   36] \r\n").size();
  const std::string wide(longest, 'w');
  EXPECT_THAT(Messages(),
              ElementsAre("wide 7 text \xE9", "narrow 8 text %", "hex 9  007FABFF10", "none  ", "null  ",
                          "as it is: %d %s", wide, std::string(longest, 'n'), wide, wide, "last"));
  EXPECT_EQ(Echo(), Text());
  EXPECT_THAT(Files(), ElementsAre(LogFolder() / "unknow----2024-05-17 12-34-56----2024-05-17 12-34-56.log"));
}

TEST_F(LogFile, OfTheSameSecondIsAppendedToByTheNextInstance) {
  for (const wchar_t* text : {L"one", L"two"}) {
    Log().SetName(L"first");
    Log().WriteText(2, text);
    CLogFile::DestroyInstance();
    CLogFile::DestroyInstance();
  }
  Log().SetName(std::wstring(5000, L'n').c_str());
  Log().WriteText(2, L"nowhere");
  EXPECT_THAT(Messages(), ElementsAre("one", "two"));
  ASSERT_THAT(Files(), SizeIs(1));
  EXPECT_TRUE(Files()[0].filename().wstring().starts_with(L"first----"));
}

TEST_F(LogFile, ObeysTheLevelSettingAndNeedsNoStandardOutput) {
  Set("LEVEL=4\r\n");
  EXPECT_THAT(MessagesOfAllLevels(), SizeIs(0));
  EXPECT_FALSE(fs::exists(HostFolder() / L"Log")) << "no folder before the first line";
  CLogFile::DestroyInstance();
  Set("");
  SetStdHandle(STD_OUTPUT_HANDLE, nullptr);
  EXPECT_THAT(MessagesOfAllLevels(), ElementsAre("level 2", "level 3"));
}

TEST_F(LogFile, ANewLevelAppliesAfterAMinute) {
  g_sinceBoot = 3'600'000;
  Log().WriteText(2, L"start");
  Set("LEVEL=1\r\n");
  for (const ULONGLONG ms : {30'000, 29'999, 1, 1}) {
    g_sinceBoot += ms;
    Log().Write(1, L"%d", static_cast<int>(g_sinceBoot % 3'600'000));
  }
  g_sinceBoot = 0;
  EXPECT_THAT(Messages(), ElementsAre("start", "60000", "60001"));
}

/// A hundred and three lines of the greatest length end just above the limit.
TEST_F(LogFile, IsFollowedByAnotherAboveOneMiB) {
  for (int i = 0; i < 103; ++i)
    Log().WriteText(2, std::wstring(10239, L'm').c_str());
  ++g_localTime.wSecond;
  Log().WriteText(2, L"next");
  ASSERT_THAT(Files(), SizeIs(2));
  EXPECT_EQ(fs::file_size(Files()[0]), 103U * 10239);
  EXPECT_EQ(Messages().back(), "next");
}

TEST_F(LogFile, TrimsItsFolderToTheBudget) {
  Set("SIZE=6\r\n");
  for (const wchar_t* name : {L"a folder/x.bin", L"a.bin", L"b.bin", L"c.bin"})
    MakeFile(LogFolder() / name, std::string(5 * kMiB / 2, 'f'));
  const std::ifstream held(LogFolder() / L"a.bin");
  Log().WriteText(2, L"first");
  EXPECT_TRUE(fs::exists(LogFolder() / L"a folder" / L"x.bin") && fs::exists(LogFolder() / L"a.bin"));
  EXPECT_FALSE(fs::exists(LogFolder() / L"b.bin"));
  EXPECT_TRUE(fs::exists(LogFolder() / L"c.bin"));
}

TEST_F(LogFile, LosesLinesQuietlyWhereItCannotWrite) {
  MakeFile(HostFolder() / L"Log", "in the way");
  Log().WriteText(2, L"lost");
  Log().WriteText(2, L"lost");
  fs::remove(HostFolder() / L"Log");
  Log().WriteText(2, L"kept");
  EXPECT_THAT(Messages(), ElementsAre("kept"));
  EXPECT_EQ(Echo(), Text()) << "a lost line is not echoed";
}

/// Such as one that the end of the process ended. It stays in this process and holds a lock that is gone.
TEST_F(LogFile, IsDestroyedWhileALostThreadHoldsItsLock) {
  const UniqueEvent stuck(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  g_stuckIn = stuck.get();
  std::thread([] { Log().WriteText(2, L"never"); }).detach();
  ASSERT_EQ(WaitForSingleObject(stuck.get(), 60000), WAIT_OBJECT_0);
  CLogFile::DestroyInstance();
  Log().WriteText(2, L"alive");
  EXPECT_EQ(Messages().back(), "alive");
}

constexpr int kLines = 300;

/// Time stands still meanwhile: a process that stops long enough for another to give up on the lock that orders
/// their lines loses one, and a busy machine may stop it as long.
void WriteFromThreads(const wchar_t* process) {
  g_sinceBoot = GetTickCount64();
  std::vector<std::jthread> threads;
  for (int thread = 0; thread < 4; ++thread)
    threads.emplace_back([=] {
      for (int i = 0; i < kLines; ++i)
        Log().Write(2, L"<%s %d %d>", process, thread, i);
    });
  threads.clear();
  g_sinceBoot = 0;
}

/// Run by the next test in another process.
TEST_F(LogFile, DISABLED_WritesFromThreads) {
  WriteFromThreads(L"B");
}

TEST_F(LogFile, KeepsAllLinesOfThreadsAndProcesses) {
  wchar_t program[MAX_PATH];
  RealFunction<decltype(GetModuleFileNameW)>("kernel32.dll", "GetModuleFileNameW")(nullptr, program,
                                                                                   MAX_PATH);
  std::wstring command = std::wstring(L"\"") + program +
                         L"\" --gtest_also_run_disabled_tests --gtest_filter=*DISABLED_WritesFromThreads";
  SetEnvironmentVariableW(kFolderVariable, HostFolder().c_str());
  SetEnvironmentVariableW(L"TEST_PREMATURE_EXIT_FILE", nullptr);  // is this process's own
  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION process{};
  ASSERT_TRUE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, DETACHED_PROCESS, nullptr,
                             nullptr, &startup, &process));
  SetEnvironmentVariableW(kFolderVariable, nullptr);
  const UniqueThread ended(process.hThread);
  const UniqueFile other(process.hProcess);
  // At the latest when its first line is there, both write.
  EXPECT_TRUE(WaitUntil([] { return !Files().empty() && fs::file_size(Files()[0]) > 0; }));
  WriteFromThreads(L"A");
  ASSERT_EQ(WaitForSingleObject(other.get(), 60000), WAIT_OBJECT_0);

  EXPECT_THAT(Files(), SizeIs(1)) << "both processes wrote to the same file";
  std::map<std::string, int> lines;
  for (const std::string& message : Messages()) {
    const size_t number = message.rfind(' ');
    EXPECT_EQ(message.substr(number), " " + std::to_string(lines[message.substr(0, number)]++) + ">")
        << message;
  }
  EXPECT_THAT(lines, testing::AllOf(SizeIs(8), testing::Each(testing::Pair(testing::_, kLines))));
}

}  // namespace
