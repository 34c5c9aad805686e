// SPDX-License-Identifier: MIT
#include "util/locked_value.h"

#include <gtest/gtest.h>

#include <thread>

/// As a callback and its context are, which no frame may meet apart.
TEST(LockedValue, IsChangedAndCopiedAsAWhole) {
  struct Pair {
    int64_t a = 0, b = 0;
  };
  LockedValue<Pair> value;
  std::thread setter([&] {
    for (int64_t i = 1; i <= 100'000; ++i)
      value.Update([i](Pair& pair) { pair.a = pair.b = i; });
  });
  int torn = 0;
  for (Pair seen; seen.a < 100'000; seen = value.Copy())
    torn += seen.a != seen.b;
  setter.join();
  EXPECT_EQ(torn, 0);
}
