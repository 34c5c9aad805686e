// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <random>
#include <vector>

#include "audio/buffer_fill.h"
#include "audio/wave_format.h"
#include "support/packet_queue.h"

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

TEST(FormatPresets, AreConsistentAndHaveBuffersOfWholeSamples) {
  for (const FormatPreset& p : {kNarrowBandPreset, kWideBandStereoPreset, kTelephonyPreset, kMuLawPreset}) {
    const WaveFormat& f = p.format;
    EXPECT_TRUE(f.blockAlign == f.channels * f.bitsPerSample / 8 && p.playBytes % f.blockAlign == 0 &&
                p.captureBytes % f.blockAlign == 0 &&
                f.averageBytesPerSecond == f.samplesPerSecond * f.blockAlign)
        << p.playBytes;
  }
}

/// Copies packets as they are, but never more samples than told.
class Copier : public PacketConverter {
 public:
  bool Stopping() const override { return stopping; }
  uint16_t Convert(std::span<const uint8_t> packet, std::span<uint8_t> room) override {
    sizes.push_back(packet.size());
    const size_t samples = std::min<size_t>({packet.size() / 2, room.size() / 2, limit});
    if (samples) std::memcpy(room.data(), packet.data(), samples * 2);
    return static_cast<uint16_t>(claimed ? claimed : samples);
  }

  bool stopping = false;
  size_t limit = 0;
  size_t claimed = 0;
  std::vector<size_t> sizes;
};

class PacketFill : public testing::Test {
 protected:
  const Bytes& Fill() {
    part.assign(16, 0xEE);
    FillPart(part, &queue, scratch, overflow, copier);
    return part;
  }

  const Bytes kInitial = Bytes(16, 0x64);
  PacketQueue queue;
  Bytes part;
  Bytes scratch = Bytes(8);
  Bytes overflow = Bytes(3);
  Copier copier;
};

TEST_F(PacketFill, WithoutConversionDrainsTheQueueUnlessStoppingAndPlaysTheInitialLevel) {
  for (uint8_t i = 0; i < 5; ++i)
    queue.Push(Bytes(6, i));
  copier.stopping = true;
  EXPECT_EQ(Fill(), kInitial);
  EXPECT_EQ(queue.Size(), 5 * (kPacketHeaderBytes + 6));
  copier.stopping = false;
  EXPECT_EQ(Fill(), kInitial);
  EXPECT_EQ(queue.Size(), 0u);
  FillPart(part, nullptr, scratch, overflow, copier);
  EXPECT_EQ(part, kInitial);
  copier.claimed = 0xFFFF;
  EXPECT_EQ(Fill(), Bytes(16, 0xEE)) << "a converter that claims too much overruns nothing";
}

TEST_F(PacketFill, ConvertedPacketsFollowEachOtherUntilThePartIsFull) {
  copier.limit = 100;
  for (uint8_t i = 1; i <= 4; ++i)
    queue.Push(Bytes(6, i));
  EXPECT_EQ(Fill(), (Bytes{1, 1, 1, 1, 1, 1, 2, 2, 2, 2, 2, 2, 3, 3, 3, 3}));
  // Asked with nothing first, then once for each packet.
  EXPECT_EQ(copier.sizes, (std::vector<size_t>{0, 6, 6, 6}));
  EXPECT_EQ(queue.Size(), kPacketHeaderBytes + 6);
}

TEST_F(PacketFill, LongPacketsAreCutAndCutOffOnesAndLyingLengthsEndTheFilling) {
  for (const uint32_t announced : {7u, 100u, 0xFFFFFFFFu}) {
    queue.PushHeader(announced);
    queue.PushRaw(Bytes(6, 1));
    EXPECT_EQ(Fill(), kInitial);
    EXPECT_EQ(queue.Size(), 0u);
  }
  queue.PushRaw(Bytes(kPacketHeaderBytes - 1, 1));
  EXPECT_EQ(Fill(), kInitial);
  copier.limit = 100;
  queue.Push(Bytes(23, 1));
  queue.Push(Bytes(4, 2));
  EXPECT_EQ(Fill(), (Bytes{1, 1, 1, 1, 1, 1, 1, 1, 2, 2, 2, 2, 0x64, 0x64, 0x64, 0x64}));
}

TEST_F(PacketFill, AnyBytesInTheQueueOverrunNothing) {
  std::mt19937 random(11);
  for (int round = 0; round < 5000; ++round) {
    Bytes bytes(random() % 90);
    for (uint8_t& byte : bytes)
      byte = static_cast<uint8_t>(random() % 4 ? 0 : random() % 40);
    queue.PushRaw(bytes);
    scratch.resize(random() % 50);
    overflow.resize(1 + random() % 50);
    copier.limit = random() % 80;
    copier.claimed = random() % 2 * copier.limit;  // or as many as there are
    for (size_t before = queue.Size() + 1; queue.Size() < before; Fill())
      before = queue.Size();
    ASSERT_TRUE(queue.Size() == 0 || copier.claimed) << round;
  }
}

TEST(SegmentRing, WrapsAndKnowsItsLimits) {
  SegmentRing ring(100);
  EXPECT_TRUE(ring.TotalBytes() == 400 && ring.SegmentOffset(3) == 300);
  for (const auto& [advance, cursor] : {std::pair{350u, 350u}, {50u, 0u}, {430u, 30u}}) {
    ring.Advance(advance);
    EXPECT_EQ(ring.Cursor(), cursor);
  }
  ring.Rewind();
  EXPECT_EQ(ring.Cursor(), 0u);
  for (const auto& [bytes, usable] :
       {std::pair{0u, false}, {1u, true}, {0x03FFFFFFu, true}, {0x04000000u, false}, {0x40000001u, false}})
    EXPECT_EQ(SegmentRing(bytes).Usable(), usable) << bytes;
}

}  // namespace
