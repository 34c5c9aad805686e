// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <fstream>
#include <map>
#include <regex>

#include "device/util/log_host.h"

namespace fs = std::filesystem;

namespace {

using testing::ElementsAre;
using testing::SizeIs;

void MakeFile(const fs::path& path, size_t size) {
  fs::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary) << std::string(size, 'f');
}

constexpr size_t kMiB = 1 << 20;

TEST(LogFile, WritesAndEchoesExactLines) {
  const LogHost host;
  ASSERT_EQ(host.Run(L"entries"), 0U);
  const std::vector<std::string> messages = host.Messages();
  ASSERT_THAT(messages, SizeIs(11));
  EXPECT_THAT(std::vector(messages.begin(), messages.begin() + 6),
              ElementsAre("wide 7 text \xE9", "narrow 8 text %", "hex 9  007FABFF10", "none  ", "null  ",
                          "as it is: %d %s"));
  // What a line of 10239 bytes leaves beside stamp, thread id and line end.
  const size_t longest = 10239 - std::string("2024-03-07   08:05:09    [   36] \r\n").size();
  EXPECT_EQ(messages[6], std::string(longest, 'w'));
  EXPECT_EQ(messages[7], std::string(longest, 'n'));
  EXPECT_EQ(messages[8], std::string(longest, 'w'));
  EXPECT_EQ(messages[9], std::string(longest, 'w'));
  EXPECT_EQ(messages[10], "last");
  EXPECT_EQ(ReadWholeFile(host.OutputFile()), host.LogText());

  const std::wregex name(LR"(unknow(----\d{4}-\d\d-\d\d \d\d-\d\d-\d\d)\1\.log)");
  ASSERT_THAT(host.LogNames(), SizeIs(1));
  EXPECT_TRUE(std::regex_match(host.LogNames()[0], name));
}

TEST(LogFile, OfTheSameSecondIsAppendedToByTheNextInstance) {
  const LogHost host;
  ASSERT_EQ(host.Run(L"files"), 0U);
  EXPECT_THAT(host.Messages(), ElementsAre("one", "two"));
  ASSERT_THAT(host.LogNames(), SizeIs(1));
  EXPECT_TRUE(host.LogNames()[0].starts_with(L"first----"));
}

TEST(LogFile, ObeysTheLevelSetting) {
  const LogHost host;
  host.SetSettings("[LOG]\r\nLEVEL=1\r\n");
  ASSERT_EQ(host.Run(L"levels"), 0U);
  EXPECT_THAT(host.Messages(), ElementsAre("level 1", "level 2", "level 3"));

  const LogHost quiet;
  quiet.SetSettings("[LOG]\r\nLEVEL=4\r\n");
  ASSERT_EQ(quiet.Run(L"levels"), 0U);
  EXPECT_FALSE(fs::exists(quiet.Folder() / L"Log")) << "no folder before the first line";
  EXPECT_EQ(ReadWholeFile(quiet.OutputFile()), "");

  const LogHost plain;
  ASSERT_EQ(plain.Run(L"levels"), 0U);
  EXPECT_THAT(plain.Messages(), ElementsAre("level 2", "level 3"));
}

TEST(LogFile, IsFollowedByAnotherAboveOneMiB) {
  const LogHost host;
  ASSERT_EQ(host.Run(L"limit"), 0U);
  ASSERT_THAT(host.LogNames(), SizeIs(2));
  EXPECT_EQ(fs::file_size(host.LogFolder() / host.LogNames()[0]), 103U * 10239);
  EXPECT_THAT(host.Messages(), SizeIs(104));
  EXPECT_EQ(host.Messages().back(), "next");
}

TEST(LogFile, KeepsAllLinesOfThreadsAndProcesses) {
  const LogHost host;
  const std::wstring name = L"nivral log start " + std::to_wstring(GetCurrentProcessId());
  const UniqueEvent start(CreateEventW(nullptr, TRUE, FALSE, name.c_str()));
  const UniqueEvent ready(CreateSemaphoreW(nullptr, 0, 2, (name + L" ready").c_str()));
  const UniqueFile first = host.Start(L"threads A \"" + name + L"\"");
  const UniqueFile second = host.Start(L"threads B \"" + name + L"\"", false);
  for (int i = 0; i < 2; ++i)
    ASSERT_EQ(WaitForSingleObject(ready.get(), 60000), WAIT_OBJECT_0);
  SetEvent(start.get());
  EXPECT_EQ(LogHost::Wait(first.get()), 0U);
  EXPECT_EQ(LogHost::Wait(second.get()), 0U);

  EXPECT_THAT(host.LogNames(), SizeIs(1)) << "both processes wrote to the same file";
  std::map<std::string, int> lines;
  for (const std::string& message : host.Messages()) {
    const size_t number = message.rfind(' ');
    const int expected = lines[message.substr(0, number)]++;
    EXPECT_EQ(message.substr(number), " " + std::to_string(expected) + ">") << message;
  }
  EXPECT_THAT(lines, SizeIs(8));
  for (const auto& [writer, count] : lines)
    EXPECT_EQ(count, 300) << writer;
}

TEST(LogFile, TrimsItsFolderToTheBudget) {
  const LogHost host;
  host.SetSettings("[LOG]\r\nSIZE=6\r\n");
  MakeFile(host.LogFolder() / L"a.bin", 2 * kMiB);
  MakeFile(host.LogFolder() / L"b.bin", 3 * kMiB);
  MakeFile(host.LogFolder() / L"c.bin", 2 * kMiB);
  MakeFile(host.LogFolder() / L"a folder" / L"x.bin", kMiB);
  const UniqueFile held(CreateFileW((host.LogFolder() / L"a.bin").c_str(), GENERIC_READ, FILE_SHARE_READ,
                                    nullptr, OPEN_EXISTING, 0, nullptr));
  ASSERT_EQ(host.Run(L"levels"), 0U);
  EXPECT_TRUE(fs::exists(host.LogFolder() / L"a.bin")) << "held open";
  EXPECT_FALSE(fs::exists(host.LogFolder() / L"b.bin"));
  EXPECT_TRUE(fs::exists(host.LogFolder() / L"c.bin"));
  EXPECT_TRUE(fs::exists(host.LogFolder() / L"a folder" / L"x.bin"));
}

TEST(LogFile, LosesLinesQuietlyWhereItCannotWrite) {
  const LogHost host;
  MakeFile(host.Folder() / L"Log", 1);
  ASSERT_EQ(host.Run(L"obstacle"), 0U);
  EXPECT_THAT(host.Messages(), ElementsAre("kept"));
  EXPECT_EQ(ReadWholeFile(host.OutputFile()), host.LogText()) << "a lost line is not echoed";
}

TEST(LogFile, NeedsNoStandardOutput) {
  const LogHost host;
  ASSERT_EQ(host.Run(L"levels", false), 0U);
  EXPECT_THAT(host.Messages(), ElementsAre("level 2", "level 3"));
}

TEST(LogFile, IsDestroyedWhileALostThreadHoldsItsLock) {
  const LogHost host;
  ASSERT_EQ(host.Run(L"destroy"), 0U);
  EXPECT_EQ(host.Messages().back(), "alive");
}

TEST(LogFile, ANewLevelAppliesAfterAMinute) {
  const LogHost host;
  ASSERT_EQ(host.Run(L"minute"), 0U);
  EXPECT_THAT(host.Messages(), ElementsAre("start", "60000", "60001"));
}

}  // namespace
