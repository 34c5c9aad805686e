// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

/// What this process holds now. For soak tests: take one after some warm-up rounds and one after the soak.
struct ProcessCounts {
  int threads;
  int handles;
  size_t heapBytes;
};

ProcessCounts CountProcess();
