// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// Device volume for a percentage: the level of the left channel in the low word, the same for the right one
/// in the high word. 100 is full volume; above it the arithmetic wraps in 32 bits.
constexpr uint32_t DeviceVolume(uint32_t percent) {
  const uint32_t level = percent * 65535u / 100u;
  return level | (level << 16);
}
