// SPDX-License-Identifier: MIT
#include "backends/ddraw/ddraw_slots.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <mutex>
#include <thread>

#include "support/frames.h"

namespace {

using PutResult = FrameSlots::PutResult;

constexpr int kWidth = 66;
constexpr int kHeight = 50;

TestFrame Numbered(uint8_t value) {
  return FlatFrame(kWidth, kHeight, value, value, value);
}

PutResult Put(FrameSlots& slots, uint8_t value) {
  TestFrame frame = Numbered(value);
  return slots.Put(frame.View(), {value, {}});
}

bool IsFlat(const uint8_t* plane, int32_t stride, int width, int height, uint8_t value) {
  for (int row = 0; row < height; ++row) {
    const uint8_t* from = plane + row * stride;
    if (!std::all_of(from, from + width, [&](uint8_t b) { return b == value; })) return false;
  }
  return true;
}

bool Holds(const FrameSlots::Loan& loan, uint8_t value) {
  const FrameView& p = loan.Planes();
  return IsFlat(p.y, p.strideY, kWidth, kHeight, value) &&
         IsFlat(p.u, p.strideU, kWidth / 2, kHeight / 2, value) &&
         IsFlat(p.v, p.strideV, kWidth / 2, kHeight / 2, value);
}

TEST(FrameSlots, TheNewestFrameWins) {
  FrameSlots slots;
  ASSERT_TRUE(slots.Open(kWidth, kHeight));
  EXPECT_FALSE(slots.Take());
  Put(slots, 1);
  Put(slots, 2);
  {
    const FrameSlots::Loan loan = slots.Take();
    ASSERT_TRUE(loan);
    EXPECT_TRUE(Holds(loan, 2));
    EXPECT_EQ(loan.Info().param2, 2);
    EXPECT_FALSE(slots.Take()) << "frame 1 was replaced";
    Put(slots, 3);
    Put(slots, 4);
    EXPECT_TRUE(Holds(loan, 2)) << "a frame on loan stays as it is";
  }
  const FrameSlots::Loan next = slots.Take();
  ASSERT_TRUE(next);
  EXPECT_TRUE(Holds(next, 4));
}

TEST(FrameSlots, RefusesFramesWhileClosed) {
  FrameSlots slots;
  EXPECT_EQ(Put(slots, 1), PutResult::Closed);
  ASSERT_TRUE(slots.Open(kWidth, kHeight));
  EXPECT_EQ(Put(slots, 1), PutResult::Stored);
  slots.Close();
  EXPECT_EQ(Put(slots, 2), PutResult::Closed);
  slots.Release();
  EXPECT_FALSE(slots.Take());
  ASSERT_TRUE(slots.Open(2, 2)) << "the size may change";
  EXPECT_FALSE(slots.Take());
}

/// Two writers in turns against a reader that holds on to its frames: no frame is torn, none of a writer comes back in
/// time, and the last one arrives.
TEST(FrameSlots, KeepsFramesWholeUnderLoad) {
  FrameSlots slots;
  ASSERT_TRUE(slots.Open(kWidth, kHeight));
  constexpr int kFrames = 3000;
  std::mutex turns;
  std::atomic<int> writing{2};
  const auto write = [&](uint8_t parity) {
    TestFrame frame = Numbered(0);
    for (int i = 1; i <= kFrames; ++i) {
      const auto value = static_cast<uint8_t>((i * 2 + parity) & 0xFF);
      frame.Fill(value, value, value);
      const std::lock_guard turn(turns);
      ASSERT_EQ(slots.Put(frame.View(), {int64_t{i} * 2 + parity, {}}), PutResult::Stored);
    }
    --writing;
  };
  std::thread even(write, 0);
  std::thread odd(write, 1);
  int64_t last[2] = {0, 0};
  int taken = 0;
  for (bool more = true; more;) {
    more = writing > 0;
    const FrameSlots::Loan loan = slots.Take();
    if (!loan) continue;
    more = true;
    ++taken;
    const int64_t number = loan.Info().param2;
    EXPECT_GT(number, last[number & 1]);
    last[number & 1] = number;
    ASSERT_TRUE(Holds(loan, static_cast<uint8_t>(number & 0xFF)));
  }
  even.join();
  odd.join();
  EXPECT_GT(taken, 0);
  EXPECT_EQ(std::max(last[0], last[1]) / 2, kFrames);
}

}  // namespace
