// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// A function of one byte.
struct ByteMap {
  alignas(64) uint8_t table[256]{};
  bool identity = false;

  template <class Function>
  void Fill(Function function) {
    identity = true;
    for (int32_t i = 0; i < 256; ++i) {
      table[i] = function(i);
      identity = identity && table[i] == i;
    }
  }
};
