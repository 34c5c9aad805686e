// SPDX-License-Identifier: MIT
#include "audio/packet_fill.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "audio/segment_ring.h"
#include "support/packet_queue.h"

namespace {

using testing::Each;

using Bytes = std::vector<uint8_t>;

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
  void Fill() { FillPart(part, &queue, scratch, overflow, copier); }

  PacketQueue queue;
  Bytes part = Bytes(16, 0xEE);
  Bytes scratch = Bytes(8);
  Bytes overflow = Bytes(3);
  Copier copier;
};

TEST_F(PacketFill, WithoutConversionDrainsTheQueueAndPlaysTheInitialLevel) {
  for (uint8_t i = 0; i < 5; ++i)
    queue.Push(Bytes(6, i));
  Fill();
  EXPECT_THAT(part, Each(0x64));
  EXPECT_EQ(queue.Size(), 0u);
  part.assign(16, 0xEE);
  Fill();
  EXPECT_THAT(part, Each(0x64));
  FillPart(part, nullptr, scratch, overflow, copier);
  EXPECT_THAT(part, Each(0x64));
}

TEST_F(PacketFill, ConvertedPacketsFollowEachOtherUntilThePartIsFull) {
  copier.limit = 100;
  for (uint8_t i = 1; i <= 4; ++i)
    queue.Push(Bytes(6, i));
  Fill();
  EXPECT_EQ(part, (Bytes{1, 1, 1, 1, 1, 1, 2, 2, 2, 2, 2, 2, 3, 3, 3, 3}));
  // Asked with nothing first, then once for each packet.
  EXPECT_EQ(copier.sizes, (std::vector<size_t>{0, 6, 6, 6}));
  EXPECT_EQ(queue.Size(), kPacketHeaderBytes + 6);
}

TEST_F(PacketFill, APacketLongerThanTheScratchIsCutAndTheNextOneIsFound) {
  copier.limit = 100;
  queue.Push(Bytes(23, 1));
  queue.Push(Bytes(4, 2));
  Fill();
  EXPECT_EQ(part, (Bytes{1, 1, 1, 1, 1, 1, 1, 1, 2, 2, 2, 2, 0x64, 0x64, 0x64, 0x64}));
}

TEST_F(PacketFill, CutOffPacketsAndLyingLengthsEndTheFilling) {
  for (const uint32_t announced : {7u, 100u, 0xFFFFFFFFu}) {
    queue.PushHeader(announced);
    queue.PushRaw(Bytes(6, 1));
    Fill();
    EXPECT_THAT(part, Each(0x64));
    EXPECT_EQ(queue.Size(), 0u);
  }
  queue.PushRaw(Bytes(kPacketHeaderBytes - 1, 1));
  Fill();
  EXPECT_THAT(part, Each(0x64));
}

TEST_F(PacketFill, AConverterThatClaimsTooMuchOverrunsNothing) {
  copier.claimed = 0xFFFF;
  Fill();
  EXPECT_THAT(part, Each(0xEE));
}

TEST_F(PacketFill, StoppingLeavesTheQueueAlone) {
  copier.stopping = true;
  queue.Push(Bytes(6, 1));
  Fill();
  EXPECT_THAT(part, Each(0x64));
  EXPECT_EQ(queue.Size(), kPacketHeaderBytes + 6);
}

TEST(SegmentRing, WrapsAndKnowsItsLimits) {
  SegmentRing ring(100);
  EXPECT_EQ(ring.TotalBytes(), 400u);
  EXPECT_EQ(ring.SegmentOffset(3), 300u);
  ring.Advance(350);
  EXPECT_EQ(ring.Cursor(), 350u);
  ring.Advance(50);
  EXPECT_EQ(ring.Cursor(), 0u);
  ring.Advance(430);
  EXPECT_EQ(ring.Cursor(), 30u);
  ring.Rewind();
  EXPECT_EQ(ring.Cursor(), 0u);
  EXPECT_FALSE(SegmentRing(0).Usable());
  EXPECT_TRUE(SegmentRing(0x03FFFFFF).Usable());
  EXPECT_FALSE(SegmentRing(0x04000000).Usable());
  EXPECT_FALSE(SegmentRing(0x40000001).Usable());
}

}  // namespace
