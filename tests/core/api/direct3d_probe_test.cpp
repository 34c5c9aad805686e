// SPDX-License-Identifier: MIT
#include "api/direct3d_probe.h"

#include <gtest/gtest.h>

#include <array>

namespace {

int32_t Fold(const std::array<uint8_t, 8>& bytes) {
  return FoldInstalledVersion(bytes);
}

TEST(DirectXVersion, AddsBothHalvesByteByByte) {
  EXPECT_EQ(Fold({0, 0, 0, 9, 0, 0, 0, 0}), 9);
  EXPECT_EQ(Fold({0, 0, 0, 4, 0, 0, 0, 9}), 13);
  EXPECT_EQ(Fold({0, 0, 0, 8, 0, 0, 0, 1}), 9);
  EXPECT_EQ(Fold({1, 2, 3, 4, 0, 0, 0, 0}), 0x01020304);
  EXPECT_EQ(Fold({0, 0, 1, 0, 0, 0, 2, 5}), 0x305);
}

TEST(DirectXVersion, TakesBytesAsSignedAndWraps) {
  EXPECT_EQ(Fold({0, 0, 0, 0xFF, 0, 0, 0, 0}), -1);
  EXPECT_EQ(Fold({0, 0, 0, 0x80, 0, 0, 0, 0x7F}), -1);
  EXPECT_EQ(Fold({0, 0, 1, 0xFF, 0, 0, 0, 0}), 255);
  EXPECT_EQ(Fold({0x7F, 0, 0, 0, 0x7F, 0, 0, 0}), static_cast<int32_t>(0xFE000000));
}

}  // namespace
