// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <array>
#include <string>
#include <vector>

#include "util/log_format.h"
#include "util/log_rules.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr LogTime kMorning{2024, 3, 7, 8, 5, 9};
constexpr LogTime kNight{2031, 12, 31, 23, 59, 58};

std::string Line(int32_t thread, std::string_view message, size_t size = 10240) {
  std::vector<char> out(size + 8, '#');
  const size_t length = FormatLogLine({out.data(), size}, kMorning, thread, message);
  EXPECT_EQ(out[length], '\0');
  EXPECT_EQ(std::string(out.data() + size, 8), "########");
  return {out.data(), length};
}

TEST(LogLine, HasStampThreadAndMessage) {
  EXPECT_EQ(Line(36, "NIVRAL_Initialize"), "2024-03-07   08:05:09    [   36] NIVRAL_Initialize\r\n");
  EXPECT_EQ(Line(123456, "a\nb"), "2024-03-07   08:05:09    [ 123456] a\nb\r\n");
  EXPECT_EQ(Line(9999, ""), "2024-03-07   08:05:09    [ 9999] \r\n");
  EXPECT_EQ(Line(-5, ""), "2024-03-07   08:05:09    [   -5] \r\n");
}

TEST(LogLine, CutsTheMessageAndKeepsTheEnd) {
  const std::string prefix = "2024-03-07   08:05:09    [   36] ";
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

TEST(LogPath, JoinsFolderNameAndStamps) {
  EXPECT_EQ(LogPath(260, L"C:\\app\\Log\\player\\", L"libnivral"),
            L"C:\\app\\Log\\player\\libnivral----2024-03-07 08-05-09----2031-12-31 23-59-58.log");
}

TEST(LogPath, IsWholeOrEmpty) {
  const std::wstring whole = LogPath(260, L"F\\", L"n");
  EXPECT_EQ(LogPath(whole.size() + 1, L"F\\", L"n"), whole);
  EXPECT_EQ(LogPath(whole.size(), L"F\\", L"n"), L"");
  EXPECT_EQ(LogPath(260, std::wstring(259, L'f'), L"n"), L"");
  EXPECT_EQ(LogPath(260, L"F\\", std::wstring(4000, L'n')), L"");
}

TEST(ProgramPlace, SplitsAtTheLastBackslashAndDot) {
  const auto split = [](std::wstring_view path) {
    const ProgramPlace place = SplitProgramPath(path);
    return std::vector<std::wstring>{std::wstring(place.folder), std::wstring(place.name)};
  };
  EXPECT_THAT(split(L"C:\\My App\\play.er.exe"), ElementsAre(L"C:\\My App\\", L"play.er"));
  EXPECT_THAT(split(L"C:\\v1.2\\player"), ElementsAre(L"C:\\v1.2\\", L"player"));
  EXPECT_THAT(split(L"player.exe"), ElementsAre(L"", L"player"));
  EXPECT_THAT(split(L"C:\\"), ElementsAre(L"C:\\", L""));
  EXPECT_THAT(split(L""), ElementsAre(L"", L""));
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

TEST(HexDump, FollowsTheMessageAfterTwoBlanks) {
  std::array<wchar_t, 10240> message{L'm', L':'};
  const std::array<uint8_t, 7> bytes{0x00, 0x0F, 0xA0, 0xFF, 0x12, 0x9B, 0xCD};
  AppendHexDump(message, 2, bytes);
  EXPECT_STREQ(message.data(), L"m:  000FA0FF129BCD");
  EXPECT_EQ(Dump(L"empty", 0), L"empty  ");
}

TEST(HexDump, TakesTheBytesThatFit) {
  // 10176 characters less the message with its blanks and two for the terminator, two per byte.
  EXPECT_EQ(Dump(L"ab", 5085).size(), 4U + 2 * 5085);
  EXPECT_EQ(Dump(L"ab", 20000).size(), 4U + 2 * 5085);
  EXPECT_EQ(Dump(L"abc", 20000).size(), 5U + 2 * 5084);
  EXPECT_EQ(Dump(std::wstring(10170, L'x'), 9).size(), 10172U + 2);
  EXPECT_EQ(Dump(std::wstring(10171, L'x'), 9).size(), 10173U);
  EXPECT_EQ(Dump(std::wstring(10236, L'x'), 9).size(), 10238U);
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
  CoarseGate gate;
  EXPECT_TRUE(gate.Opens(5)) << "never closed";
  gate.Close(1000);
  EXPECT_FALSE(gate.Opens(1000));
  EXPECT_FALSE(gate.Opens(59999));
  EXPECT_TRUE(gate.Opens(60000));
  EXPECT_FALSE(gate.Opens(60000)) << "asked in this millisecond";
  EXPECT_TRUE(gate.Opens(60001));
  EXPECT_TRUE(gate.Opens(90000));
}

/// A folder in listing order; a file named "held" cannot be deleted.
struct Folder {
  std::vector<std::pair<std::string, uint32_t>> files;
  std::vector<std::string> deleted{};

  void Trim(uint64_t budget) {
    TrimToBudget(
        [this](auto visit) {
          for (const auto& [name, size] : files)
            if (!visit(name.c_str(), size)) return;
        },
        [this](const char* name) {
          if (std::string(name) == "held") return false;
          deleted.emplace_back(name);
          return true;
        },
        budget);
  }
};

TEST(LogFolder, LosesFilesInListingOrderUntilBelowTheBudget) {
  Folder below{{{"a", 50}, {"b", 49}}};
  below.Trim(100);
  EXPECT_THAT(below.deleted, IsEmpty());

  Folder exact{{{"z", 40}, {"b", 40}, {"c", 20}}};
  exact.Trim(100);
  EXPECT_THAT(exact.deleted, ElementsAre("z")) << "a full folder is over, and order is not by name";

  Folder held{{{"held", 100}, {"a", 10}, {"b", 10}}};
  held.Trim(100);
  EXPECT_THAT(held.deleted, ElementsAre("a", "b"));

  Folder large{{{"a", 0xFFFFFFFFU}, {"b", 0xFFFFFFFFU}, {"c", 7}}};
  large.Trim(1 << 20);
  EXPECT_THAT(large.deleted, ElementsAre("a", "b")) << "a sum beyond 32 bits";
}

}  // namespace
