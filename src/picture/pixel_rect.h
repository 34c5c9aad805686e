// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstdint>

namespace libnivral {

/// A rectangle of pixels, right and bottom excluded.
struct PixelRect {
  int32_t left = 0;
  int32_t top = 0;
  int32_t right = 0;
  int32_t bottom = 0;

  constexpr bool Empty() const { return right <= left || bottom <= top; }
  constexpr int64_t Width() const { return int64_t{right} - left; }
  constexpr int64_t Height() const { return int64_t{bottom} - top; }
  constexpr bool operator==(const PixelRect&) const = default;
};

constexpr PixelRect Intersect(const PixelRect& a, const PixelRect& b) {
  return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
          std::min(a.bottom, b.bottom)};
}

/// Truncates toward zero; values that a 32-bit integer cannot hold, NaN included, give INT32_MIN as the x86
/// conversion instruction does.
constexpr int32_t TruncToInt(float value) {
  return value > -2147483904.0f && value < 2147483648.0f ? static_cast<int32_t>(value) : INT32_MIN;
}

constexpr int32_t SaturateToInt(int64_t value) {
  return static_cast<int32_t>(std::clamp<int64_t>(value, INT32_MIN, INT32_MAX));
}

/// An edge at a fraction of a client extent, in single precision.
constexpr int32_t ScaleEdge(int32_t extent, float fraction) {
  return TruncToInt(static_cast<float>(extent) * fraction);
}

}  // namespace libnivral
