// SPDX-License-Identifier: MIT
#include "audio/packet_fill.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "audio/segment_ring.h"
#include "support/packet_queue.h"

namespace {

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
