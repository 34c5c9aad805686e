// SPDX-License-Identifier: MIT
#include "api/direct3d_probe.h"

#include <gtest/gtest.h>

#include <array>

using namespace libnivral;

TEST(DirectXVersion, AddsBothHalvesByteByByteAsSignedOnesAndWraps) {
  const std::pair<std::array<uint8_t, 8>, uint32_t> cases[] = {
      {{0, 0, 0, 4, 0, 0, 0, 9}, 13},     {{1, 2, 3, 4, 0, 0, 0, 0}, 0x01020304},
      {{0, 0, 1, 0, 0, 0, 2, 5}, 0x305},  {{0, 0, 0, 0x80, 0, 0, 0, 0x7F}, 0xFFFFFFFF},
      {{0, 0, 1, 0xFF, 0, 0, 0, 0}, 255}, {{0x7F, 0, 0, 0, 0x7F, 0, 0, 0}, 0xFE000000}};
  for (const auto& [bytes, version] : cases)
    EXPECT_EQ(static_cast<uint32_t>(FoldInstalledVersion(bytes)), version);
}
