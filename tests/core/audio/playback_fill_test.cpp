// SPDX-License-Identifier: MIT
#include "audio/playback_fill.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <climits>
#include <vector>

#include "audio/wave_format.h"

namespace {

using Bytes = std::vector<uint8_t>;
constexpr int kUnregistered = INT_MIN;

/// Answers with a script of byte counts, writing the number of the call that often; then stops.
class ScriptedSource : public SampleSource {
 public:
  ScriptedSource(const std::vector<int>& answers, const Bytes& whole) : m_answers(answers), m_whole(whole) {}

  bool Stopped() const override { return asked == m_answers.size(); }
  std::optional<int> Pull(std::span<uint8_t> buffer) override {
    if (m_answers[asked] == kUnregistered) return std::nullopt;
    EXPECT_TRUE(buffer.data() == m_whole.data() && buffer.size() == m_whole.size());
    const int answer = m_answers[asked++];
    std::fill_n(buffer.begin(), std::clamp<int64_t>(answer, 0, static_cast<int64_t>(buffer.size())),
                static_cast<uint8_t>(asked));
    return answer;
  }
  void YieldThread() override { ++yields; }

  size_t asked = 0;
  int yields = 0;

 private:
  const std::vector<int>& m_answers;
  const Bytes& m_whole;
};

TEST(FillPlaybackBuffer, AsksForTheWholeUntilTheAnswersAddUpAndZeroesWhatNothingWasWrittenTo) {
  constexpr uint8_t kOld = 0xEE;
  const struct {
    std::vector<int> answers;
    bool paused;
    size_t asked;
    int yields;
    Bytes buffer;
  } cases[] = {{{3, 3, 0, -3, 1, 8}, false, 6, 2, Bytes(8, 6)},
               {{3, 3, 0, -3, 2, 8}, false, 5, 2, {5, 5, 2, kOld, kOld, kOld, kOld, kOld}},
               {{7, INT_MAX, 1}, false, 2, 0, Bytes(8, 2)},
               {{2}, false, 1, 0, {1, 1, kOld, kOld, kOld, kOld, kOld, kOld}},
               {{}, false, 0, 0, Bytes(8)},
               {{0, -1, INT_MIN + 1}, false, 3, 3, Bytes(8)},
               {{kUnregistered}, false, 0, 0, Bytes(8)},
               {{8}, true, 0, 0, Bytes(8)}};
  for (const auto& c : cases) {
    Bytes buffer(8, kOld);
    ScriptedSource source(c.answers, buffer);
    FillPlaybackBuffer(buffer, c.paused, source);
    EXPECT_EQ(buffer, c.buffer);
    EXPECT_TRUE(source.asked == c.asked && source.yields == c.yields) << testing::PrintToString(c.answers);
  }
}

TEST(DeviceVolume, SetsBothChannelsAndWrapsAboveFull) {
  // 101 * 65535 / 100 = 66190 = 0x1028E: the carry of the left level meets the right one.
  // 65538 * 65535 = 4295032830 wraps to 65534 before the division.
  constexpr std::pair<uint32_t, uint32_t> kCases[] = {
      {0, 0}, {1, 0x028F028F}, {50, 0x7FFF7FFF}, {100, 0xFFFFFFFF}, {101, 0x028F028E}, {65538, 0x028F028F}};
  for (const auto& [percent, volume] : kCases)
    EXPECT_EQ(DeviceVolume(percent), volume) << percent;
}

}  // namespace
