// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// A piecewise linear way to compute a byte map in 16-bit words. With p = ((byte << 8 | fill) * factor) >>
/// 16, seven fraction bits:
///   above = (p -|+ ...) >> 7, below = (p -|+ ...) >> 7, byte = max(above, min(below, 128))
/// where additions and subtractions saturate: one of each pair is 0.
struct LinearMap {
  uint16_t factor = 0;
  uint16_t fill = 0;
  uint16_t addAbove = 0;
  uint16_t subAbove = 0;
  uint16_t addBelow = 0;
  uint16_t subBelow = 0;
};

/// Another way, for functions that are odd around 128. With a = 2 * |byte - 128|:
///   a = 2 * ((a * factor) >> 16) for both factors in turn, byte = 128 -|+ a / 2
struct OddMap {
  uint16_t factors[2] = {0, 0};
};

/// A function of one byte, in the forms that the loops can use.
struct ByteMap {
  enum class Form { Identity, Linear, Odd, Table };

  alignas(64) uint8_t table[256]{};
  /// The table with each 16 bytes as their difference (exclusive-or) to the 16 before, in each half.
  alignas(64) uint8_t steps[256]{};
  Form form = Form::Identity;
  LinearMap linear;
  OddMap odd;

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
  void TryOdd(double firstSlope, double secondSlope);

 private:
  void FindTableForm();
};
