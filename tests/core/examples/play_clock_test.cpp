// SPDX-License-Identifier: MIT
#include "player/media/play_clock.h"

#include <gtest/gtest.h>

namespace {

TEST(PlayClock, RunsAtItsSpeedStaysWhereItIsToldAndFollowsTheSound) {
  PlayClock clock;
  PlayClock::TimePoint now;
  const auto pass = [&](int ms) { return clock.Read(now += std::chrono::milliseconds(ms)).position; };
  EXPECT_EQ(pass(500), 0);
  clock.JumpTo(10);
  EXPECT_EQ(clock.Read(now).jump, 1u);
  EXPECT_EQ(pass(500), 10);
  clock.Run(now);
  EXPECT_NEAR(pass(500), 10.5, 1e-9);
  clock.SetSpeed(4, now);
  EXPECT_NEAR(pass(500), 12.5, 1e-9);
  clock.Stop(now);
  clock.Follow(50, now);
  EXPECT_NEAR(pass(500), 12.5, 1e-9) << "a sound that ends late moves nothing";
  clock.SetSpeed(1, now);
  clock.Run(now);
  clock.Follow(12.45, now);
  EXPECT_NEAR(pass(0), 12.45, 1e-9) << "at first at once";
  clock.Follow(12.55, now);
  EXPECT_NEAR(pass(0), 12.55, 1e-9) << "a jump at once, too";
  clock.Follow(12.56, now);
  EXPECT_NEAR(pass(0), 12.551, 1e-9) << "small differences little by little";
  for (int i = 1; i <= 40; ++i)
    clock.Follow(12.56 + i * 0.1 - (i % 8 == 5 ? 0 : 0.05), now += std::chrono::milliseconds(100));
  EXPECT_NEAR(pass(0), 16.56, 2e-3) << "what is told late moves nothing";
}

}  // namespace
