// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace libnivral {

/// A planar YUV 4:2:0 picture in somebody's memory, to read: height rows of Y, height / 2 rows of U and of V.
/// Strides are in bytes and include padding; where one is negative, the plane's pointer is to the top row,
/// and each row below lies before it in memory. Width and height travel beside it.
struct ConstFrameView {
  const uint8_t* y = nullptr;
  int32_t strideY = 0;
  const uint8_t* u = nullptr;
  int32_t strideU = 0;
  const uint8_t* v = nullptr;
  int32_t strideV = 0;

  constexpr bool IsBottomUp() const { return strideY < 0 || strideU < 0 || strideV < 0; }
};

/// The same, to write as well.
struct FrameView {
  uint8_t* y = nullptr;
  int32_t strideY = 0;
  uint8_t* u = nullptr;
  int32_t strideU = 0;
  uint8_t* v = nullptr;
  int32_t strideV = 0;
  // NOLINTNEXTLINE(google-explicit-constructor): whoever may write may read
  constexpr operator ConstFrameView() const { return {y, strideY, u, strideU, v, strideV}; }
};

/// Whether the planes hold a picture of this size: the one rule for all that read frames. Each plane that has
/// samples is there, and its rows do not overlap. Chroma of a picture one pixel wide or high has no samples;
/// a picture below one pixel is none.
constexpr bool HoldsFrame(const ConstFrameView& f, int64_t width, int64_t height) {
  const auto holds = [](const uint8_t* plane, int64_t stride, int64_t row) {
    return plane && (stride < 0 ? -stride : stride) >= row;
  };
  if (width < 1 || height < 1 || !holds(f.y, f.strideY, width)) return false;
  if (width < 2 || height < 2) return true;
  return holds(f.u, f.strideU, width / 2) && holds(f.v, f.strideV, width / 2);
}

enum class MirrorMode : uint32_t { None = 0, Horizontal = 1, HalfTurn = 2 };

/// Copies `rows` rows of `width` bytes. Strides in bytes and at least the width, that of the source also in
/// the other direction. Bytes between the rows may be overwritten.
inline void CopyPlane(uint8_t* to, int32_t toStride, const uint8_t* from, int32_t fromStride, size_t width,
                      size_t rows) {
  if (width == 0 || rows == 0) return;
  if (toStride == fromStride) {
    // A plane may end with the picture of its last row.
    std::memcpy(to, from, (rows - 1) * static_cast<size_t>(fromStride) + width);
    return;
  }
  for (size_t row = 0; row < rows; ++row, to += toStride, from += fromStride)
    std::memcpy(to, from, width);
}

}  // namespace libnivral
