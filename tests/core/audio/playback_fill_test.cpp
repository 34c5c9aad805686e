// SPDX-License-Identifier: MIT
#include "audio/playback_fill.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <climits>
#include <vector>

#include "audio/volume_level.h"
#include "audio/wave_format.h"

namespace {

using testing::Each;

/// Answers with a script of byte counts, writing that many bytes of a rising mark each time; then stops.
class ScriptedSource : public SampleSource {
 public:
  explicit ScriptedSource(std::vector<int> answers) : m_answers(std::move(answers)) {}

  bool Stopped() const override { return m_asked == m_answers.size(); }
  std::optional<int> Pull(std::span<uint8_t> buffer) override {
    if (m_answers[m_asked] == kUnregistered) return std::nullopt;
    starts.push_back(buffer.data());
    sizes.push_back(buffer.size());
    const int answer = m_answers[m_asked++];
    const size_t written = std::min(buffer.size(), static_cast<size_t>(std::max(answer, 0)));
    std::fill_n(buffer.begin(), written, static_cast<uint8_t>(m_asked));
    return answer;
  }
  void GiveWay() override { ++yields; }

  static constexpr int kUnregistered = INT_MIN;
  std::vector<uint8_t*> starts;
  std::vector<size_t> sizes;
  int yields = 0;

 private:
  std::vector<int> m_answers;
  size_t m_asked = 0;
};

TEST(FillPlaybackBuffer, AsksAgainWithTheSameStartAndFullSizeUntilTheAnswersAddUp) {
  std::vector<uint8_t> buffer(100, 0xEE);
  ScriptedSource source({40, 40, 0, -3, 20, 100});
  FillPlaybackBuffer(buffer, false, source);
  EXPECT_EQ(source.starts, std::vector<uint8_t*>(5, buffer.data()));
  EXPECT_EQ(source.sizes, std::vector<size_t>(5, 100));
  EXPECT_EQ(source.yields, 2);
  EXPECT_THAT(std::span(buffer).first(20), Each(5));
  EXPECT_THAT(std::span(buffer).subspan(20, 20), Each(2));
  EXPECT_THAT(std::span(buffer).subspan(40), Each(0xEE));
}

TEST(FillPlaybackBuffer, ZeroesABufferThatNothingWasWrittenTo) {
  for (const auto& answers : {std::vector<int>{}, {0, -1, INT_MIN + 1}, {ScriptedSource::kUnregistered}}) {
    std::vector<uint8_t> buffer(64, 0xEE);
    ScriptedSource source(answers);
    FillPlaybackBuffer(buffer, false, source);
    EXPECT_THAT(buffer, Each(0));
  }
}

TEST(FillPlaybackBuffer, KeepsAPartOfABufferThatStopCutShort) {
  std::vector<uint8_t> buffer(64, 0xEE);
  ScriptedSource source({10});
  FillPlaybackBuffer(buffer, false, source);
  EXPECT_EQ(buffer[9], 1);
  EXPECT_EQ(buffer[10], 0xEE);
}

TEST(FillPlaybackBuffer, HugeAnswersDoNotOverflowTheSum) {
  std::vector<uint8_t> buffer(64);
  ScriptedSource source({63, INT_MAX, 1});
  FillPlaybackBuffer(buffer, false, source);
  EXPECT_EQ(source.starts.size(), 2u);
}

TEST(FillPlaybackBuffer, PausedNeverAsks) {
  std::vector<uint8_t> buffer(64, 0xEE);
  ScriptedSource source({64});
  FillPlaybackBuffer(buffer, true, source);
  EXPECT_TRUE(source.starts.empty());
  EXPECT_THAT(buffer, Each(0));
}

TEST(DeviceVolume, SetsBothChannelsAndWrapsAboveFull) {
  EXPECT_EQ(DeviceVolume(0), 0u);
  EXPECT_EQ(DeviceVolume(1), 0x028F028Fu);
  EXPECT_EQ(DeviceVolume(50), 0x7FFF7FFFu);
  EXPECT_EQ(DeviceVolume(100), 0xFFFFFFFFu);
  // 101 * 65535 / 100 = 66190 = 0x1028E: the carry of the left level meets the right one.
  EXPECT_EQ(DeviceVolume(101), 0x028F028Eu);
  // 65538 * 65535 = 4295032830 wraps to 65534 before the division.
  EXPECT_EQ(DeviceVolume(65538), 0x028F028Fu);
}

TEST(FormatPresets, AreTheFixedOnes) {
  const auto numbers = [](const FormatPreset& p) {
    const WaveFormat& f = p.format;
    return std::vector<int64_t>{f.tag,         f.channels,      f.samplesPerSecond, f.averageBytesPerSecond,
                                f.blockAlign,  f.bitsPerSample, f.extraBytes,       p.playBytes,
                                p.captureBytes};
  };
  EXPECT_EQ(numbers(kNarrowBandPreset), (std::vector<int64_t>{1, 1, 8000, 16000, 2, 16, 0, 4050, 4050}));
  EXPECT_EQ(numbers(kWideBandStereoPreset),
            (std::vector<int64_t>{1, 2, 48000, 192000, 4, 16, 22, 9216, 9216}));
  EXPECT_EQ(numbers(kTelephonyPreset), (std::vector<int64_t>{1, 1, 8000, 16000, 2, 16, 0, 1280, 160}));
  EXPECT_EQ(numbers(kMuLawPreset), (std::vector<int64_t>{7, 1, 8000, 8000, 1, 8, 0, 508, 508}));
}

}  // namespace
