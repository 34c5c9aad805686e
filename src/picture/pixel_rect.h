// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstdint>

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
