// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace libnivral {

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
