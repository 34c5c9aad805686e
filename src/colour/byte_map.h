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

/// A function of one byte.
struct ByteMap {
  alignas(64) uint8_t table[256]{};
  bool identity = false;
  bool isLinear = false;
  LinearMap linear;

  template <class Function>
  void Fill(Function function) {
    identity = true;
    for (int32_t i = 0; i < 256; ++i) {
      table[i] = function(i);
      identity = identity && table[i] == i;
    }
  }

  /// Looks for a linear form that equals the table for every byte; `slope` is that of the function before
  /// rounding, 0 to 2.
  void FindLinear(double slope);
};
