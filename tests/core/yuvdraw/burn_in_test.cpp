// SPDX-License-Identifier: MIT
#include "display/burn_in.h"

#include <gtest/gtest.h>

#include <bit>
#include <random>

#include "burn_in_reference.h"
#include "display/overlay_layout.h"
#include "support/frames.h"
#include "support/one_box.h"

namespace {

void BurnInAlgRecord(CYuvDraw& draw, const AlgRecord& record, const FrameView& frame, uint32_t width,
                     uint32_t height) {
  const auto w = static_cast<int32_t>(width), h = static_cast<int32_t>(height);
  OverlayList list;
  LayOutRecord(list, &record, {w, h, w, h}, BurnInStyle());
  BurnIn(draw, list, frame, width, height);
}

void ExpectLikeReference(const AlgRecord& record, int32_t width, int32_t height) {
  TestFrame frame(width, height, width + height % 4, width / 2 + height % 3);
  frame.Fill(200, 120, 60);
  ReferencePlanes expected(static_cast<uint32_t>(width), static_cast<uint32_t>(height), frame.y, frame.u,
                           frame.v);
  expected.Draw(record);
  CYuvDraw draw;
  BurnInAlgRecord(draw, record, frame.View(), static_cast<uint32_t>(width), static_cast<uint32_t>(height));
  ASSERT_EQ(frame.y, expected.y) << width << "x" << height;
  ASSERT_EQ(frame.u, expected.u) << width << "x" << height;
  ASSERT_EQ(frame.v, expected.v) << width << "x" << height;
}

class RandomRecords {
 public:
  explicit RandomRecords(uint32_t seed) : m_random(seed) {}

  int32_t Below(int32_t limit) { return static_cast<int32_t>(m_random() % static_cast<uint32_t>(limit)); }

  AlgRecord Next(int32_t width, int32_t height) {
    AlgRecord record{};
    record.count = static_cast<uint16_t>(Below(14));
    for (int32_t i = 0; i < kMaxBoxes; ++i) {
      record.left[i] = Edge(width);
      record.top[i] = Edge(height);
      record.right[i] = Edge(width);
      record.bottom[i] = Edge(height);
      record.classId[i] = static_cast<uint16_t>(Below(10));
      record.distance[i] = static_cast<uint16_t>(Below(3) * Below(400) * Below(80));
    }
    return record;
  }

 private:
  /// Mostly near the picture, now and then any 32 bits at all.
  float Edge(int32_t size) {
    if (Below(40) == 0) return std::bit_cast<float>(static_cast<uint32_t>(m_random()));
    return static_cast<float>(Below(size * 16 + 400) - 200) / 11.0f;
  }

  std::mt19937 m_random;
};

TEST(BurnIn, MatchesTheReferenceForRandomRecordsAndSizes) {
  RandomRecords random(4711);
  for (int n = 0; n < 600; ++n) {
    const int32_t width = 1 + random.Below(90);
    const int32_t height = 1 + random.Below(70);
    ExpectLikeReference(random.Next(width, height), width, height);
  }
  for (int n = 0; n < 4; ++n)
    ExpectLikeReference(random.Next(1280, 720), 1280, 720);
}

TEST(BurnIn, LeavesFramesAloneThatItCannotHold) {
  const AlgRecord record = OneBox(0, 0, 8, 8, 1, 1);
  CYuvDraw draw;
  uint8_t byte = 77;
  const FrameView narrow[] = {
      {&byte, 7, &byte, 4, &byte, 4}, {&byte, 8, &byte, 3, &byte, 4}, {&byte, 8, &byte, 4, &byte, -4}};
  for (const FrameView& frame : narrow)
    BurnInAlgRecord(draw, record, frame, 8, 8);
  BurnInAlgRecord(draw, record, {&byte, 1 << 20, &byte, 1 << 20, &byte, 1 << 20}, 1 << 20, 8);
  BurnInAlgRecord(draw, record, {nullptr, 8, nullptr, 4, nullptr, 4}, 8, 8);
  EXPECT_EQ(byte, 77);
}

}  // namespace
