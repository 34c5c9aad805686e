// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// Row strides of a frame in bytes.
struct FrameStrides {
  int32_t y = 0;
  int32_t u = 0;
  int32_t v = 0;

  constexpr bool operator==(const FrameStrides&) const = default;
};

/// Whether a frame's layout differs from that of the last frame shown. The first frame never does, nor does
/// one with a chroma stride below 1.
constexpr bool StridesChanged(const FrameStrides& last, const FrameStrides& now) {
  return last.y >= 1 && now.u >= 1 && now.v >= 1 && now != last;
}
