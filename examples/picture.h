// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

/// A planar YUV 4:2:0 picture that owns its memory. Rows are not padded; the chroma planes are rounded up.
struct Picture {
  Picture(int w, int h)
      : width(w),
        height(h),
        strideUV((w + 1) / 2),
        y(static_cast<size_t>(w) * static_cast<size_t>(h)),
        u(static_cast<size_t>(strideUV) * static_cast<size_t>((h + 1) / 2)),
        v(u.size()) {}

  int width;
  int height;
  int strideUV;
  std::vector<uint8_t> y;
  std::vector<uint8_t> u;
  std::vector<uint8_t> v;
};
