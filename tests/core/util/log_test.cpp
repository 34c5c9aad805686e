// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "util/log_format.h"
#include "util/log_rules.h"

using namespace libnivral;

namespace {

constexpr LogTime kMorning{2024, 3, 7, 8, 5, 9};
constexpr LogTime kNight{2031, 12, 31, 23, 59, 58};

std::string Line(int32_t thread, std::string_view message, size_t size = 10240) {
  std::vector<char> out(size + 8, '#');
  const size_t length = FormatLogLine({out.data(), size}, kMorning, thread, message);
  EXPECT_EQ(out[length], '\0');
  EXPECT_EQ(std::string(out.data() + size, 8), "########");
  return {out.data(), length};
}

TEST(LogLine, HasStampThreadAndMessageAndKeepsItsEnd) {
  EXPECT_EQ(Line(36, "NIVRAL_Initialize"), "2024-03-07   08:05:09    [   36] NIVRAL_Initialize\r\n");
  EXPECT_EQ(Line(123456, "a\nb"), "2024-03-07   08:05:09    [ 123456] a\nb\r\n");
  EXPECT_EQ(Line(9999, ""), "2024-03-07   08:05:09    [ 9999] \r\n");
  EXPECT_EQ(Line(-5, ""), "2024-03-07   08:05:09    [   -5] \r\n");
  const std::string prefix = Line(36, "").substr(0, 33);
  EXPECT_EQ(Line(36, std::string(200, 'x'), 100), prefix + std::string(97 - prefix.size(), 'x') + "\r\n");
  EXPECT_EQ(Line(36, std::string(97 - prefix.size(), 'x'), 100).size(), 99U);
  EXPECT_EQ(Line(36, std::string(10239, 'x')).size(), 10239U);
}

std::wstring LogPath(size_t size, std::wstring_view folder, std::wstring_view name) {
  std::vector<wchar_t> out(size, L'#');
  const bool fits = FormatLogPath(out, folder, name, kMorning, kNight);
  EXPECT_EQ(fits, out[0] != L'\0');
  return out.data();
}

TEST(LogPath, JoinsFolderNameAndStampsAndIsWholeOrEmpty) {
  const std::wstring whole = LogPath(260, L"C:\\Log\\player\\", L"libnivral");
  EXPECT_EQ(whole, L"C:\\Log\\player\\libnivral----2024-03-07 08-05-09----2031-12-31 23-59-58.log");
  EXPECT_EQ(LogPath(whole.size() + 1, L"C:\\Log\\player\\", L"libnivral"), whole);
  EXPECT_EQ(LogPath(whole.size(), L"C:\\Log\\player\\", L"libnivral"), L"");
  EXPECT_EQ(LogPath(260, L"F\\", std::wstring(4000, L'n')), L"");
}

TEST(ProgramPlace, SplitsAtTheLastBackslashAndDot) {
  const std::array<std::wstring_view, 3> cases[] = {{L"C:\\My App\\play.er.exe", L"C:\\My App\\", L"play.er"},
                                                    {L"C:\\v1.2\\player", L"C:\\v1.2\\", L"player"},
                                                    {L"player.exe", L"", L"player"},
                                                    {L"C:\\", L"C:\\", L""}};
  for (const auto& [path, folder, name] : cases)
    EXPECT_TRUE(SplitProgramPath(path).folder == folder && SplitProgramPath(path).name == name)
        << name.size();
}

std::wstring Dump(std::wstring_view text, size_t count) {
  std::array<wchar_t, 10240> message;
  message.fill(L'#');
  std::copy(text.begin(), text.end(), message.begin());
  const std::vector<uint8_t> bytes(count, 0xC5);
  const size_t length = AppendHexDump(message, text.size(), bytes);
  EXPECT_EQ(message[length], L'\0');
  return {message.data(), length};
}

TEST(HexDump, FollowsTheMessageAfterTwoBlanksAndTakesTheBytesThatFit) {
  std::array<wchar_t, 10240> message{L'm', L':'};
  const std::array<uint8_t, 7> bytes{0x00, 0x0F, 0xA0, 0xFF, 0x12, 0x9B, 0xCD};
  AppendHexDump(message, 2, bytes);
  EXPECT_STREQ(message.data(), L"m:  000FA0FF129BCD");
  EXPECT_EQ(Dump(L"empty", 0), L"empty  ");
  // 10176 characters less the message with its blanks and two for the terminator, two per byte.
  const size_t cases[][3] = {{2, 5085, 4 + 2 * 5085}, {2, 20000, 4 + 2 * 5085}, {3, 20000, 5 + 2 * 5084},
                             {10170, 9, 10172 + 2},   {10171, 9, 10173},        {10236, 9, 10238}};
  for (const auto& [length, count, whole] : cases)
    EXPECT_EQ(Dump(std::wstring(length, L'x'), count).size(), whole) << length << ", " << count;
}

TEST(LogSettings, AcceptSixToOneThousandAndTwentyFourMiB) {
  for (const int32_t odd : {INT32_MIN, -6, 0, 3, 5, 1025, 2000, INT32_MAX})
    EXPECT_EQ(AcceptedLogSizeMiB(odd), 5U) << odd;
  for (const uint32_t taken : {6U, 7U, 1024U})
    EXPECT_EQ(AcceptedLogSizeMiB(static_cast<int32_t>(taken)), taken);
}

TEST(LogSettings, AreDueAfterAMinuteOfASignedWrappingClock) {
  EXPECT_FALSE(LogSettingsDue(60999, 1000));
  EXPECT_TRUE(LogSettingsDue(61000, 1000));
  EXPECT_TRUE(LogSettingsDue(59999, 0xFFFFFFFFU));
  EXPECT_FALSE(LogSettingsDue(59998, 0xFFFFFFFFU));
  EXPECT_FALSE(LogSettingsDue(1000, 5000)) << "a clock that was set back";
}

TEST(LogSettings, CoarseClockAsksTheExactOneInTheLastSecond) {
  CoarseDeadline deadline;
  EXPECT_TRUE(deadline.Passed(5)) << "never started";
  deadline.Restart(1000);
  EXPECT_FALSE(deadline.Passed(1000));
  EXPECT_FALSE(deadline.Passed(59999));
  EXPECT_TRUE(deadline.Passed(60000));
  EXPECT_FALSE(deadline.Passed(60000)) << "asked in this millisecond";
  EXPECT_TRUE(deadline.Passed(60001));
  EXPECT_TRUE(deadline.Passed(90000));
}

using Files = std::vector<std::pair<std::string, uint32_t>>;

/// What is deleted of files in listing order; one named "held" cannot be.
std::string Deleted(const Files& files, uint64_t budget) {
  std::string deleted;
  const auto forEach = [&](auto visit) {
    for (const auto& [name, size] : files)
      if (!visit(name.c_str(), size)) return;
  };
  const auto remove = [&](const char* name) {
    if (std::string(name) == "held") return false;
    deleted += name;
    return true;
  };
  TrimToBudget(forEach, remove, budget);
  return deleted;
}

TEST(LogFolder, LosesFilesInListingOrderUntilBelowTheBudget) {
  EXPECT_EQ(Deleted({{"a", 50}, {"b", 49}}, 100), "");
  EXPECT_EQ(Deleted({{"z", 40}, {"b", 40}, {"c", 20}}, 100), "z") << "a full folder is over";
  EXPECT_EQ(Deleted({{"held", 100}, {"a", 10}, {"b", 10}}, 100), "ab");
  EXPECT_EQ(Deleted({{"a", 0xFFFFFFFF}, {"b", 0xFFFFFFFF}, {"c", 7}}, 1 << 20), "ab") << "beyond 32 bits";
}

}  // namespace
