// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// Truncates toward zero; values that a 32-bit integer cannot hold, NaN included, give INT32_MIN as the x86
/// conversion instruction does.
constexpr int32_t TruncToInt(float value) {
  return value > -2147483904.0f && value < 2147483648.0f ? static_cast<int32_t>(value) : INT32_MIN;
}

/// An edge at a fraction of a client extent, in single precision.
constexpr int32_t ScaleEdge(int32_t extent, float fraction) {
  return TruncToInt(static_cast<float>(extent) * fraction);
}
