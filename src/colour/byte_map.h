// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace libnivral {

/// A line whose rounding changes in the middle, in 16-bit words. With seven fraction bits in
///   p = ((byte * 256 + fill) * factor) >> 16
///   above = (p + addAbove - subAbove) >> 7, below = (p + addBelow - subBelow) >> 7
///   byte = max(above, min(below, 128)), at most 255
/// Additions and subtractions saturate at 65535 and 0; one of each pair of offsets is 0.
struct LinearMap {
  uint16_t factor = 0;
  uint16_t fill = 0;
  uint16_t addAbove = 0;
  uint16_t subAbove = 0;
  uint16_t addBelow = 0;
  uint16_t subBelow = 0;
};

/// A function that is odd around 128: the distance to 128 is twice multiplied and truncated,
///   distance = (2 * distance * factor) >> 16
/// and goes back to the side it came from, clamped to a byte.
struct OddSymmetricMap {
  uint16_t factors[2] = {0, 0};

  OddSymmetricMap() = default;
  /// Each slope, 0 to 2, belongs to one truncation.
  OddSymmetricMap(double firstSlope, double secondSlope);

  uint8_t ToByte(int32_t distance) const;
};

/// A function of one byte, in the forms that the loops can use.
struct ByteMap {
  enum class Form { Identity, Linear, OddSymmetric, Table };

  alignas(64) uint8_t table[256]{};
  /// The table with each 16 bytes as their difference (exclusive-or) to the 16 before, in each half.
  alignas(64) uint8_t steps[256]{};
  Form form = Form::Identity;
  LinearMap linear;
  OddSymmetricMap odd;

  template <class Function>
  void Fill(Function function) {
    for (int32_t i = 0; i < 256; ++i)
      table[i] = function(i);
    FindTableForm();
  }

  /// Chooses the linear form if it equals the table for every byte; `slope` is that of the function before
  /// rounding, 0 to 2.
  void TryLinear(double slope);

  /// Chooses the odd form if it equals the table for every byte; each slope belongs to one rounding.
  void TryOddSymmetric(double firstSlope, double secondSlope);

 private:
  void FindTableForm();
};

}  // namespace libnivral
