// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <iosfwd>

/// What this process holds now. For soak tests: take one after some warm-up rounds and one after the soak.
struct ProcessCounts {
  int threads;
  int handles;
  size_t heapBytes;
  int gdiObjects;
  int windows;  ///< of the calling thread
};

ProcessCounts CountProcess();

/// The same after a moment in which threads of the system that are on their way out can end.
ProcessCounts CountSettledProcess();

void PrintTo(const ProcessCounts& counts, std::ostream* out);

/// EXPECTs that nothing came to `before` but `heapSlack` bytes and the odd handle that systems keep.
void ExpectNoGrowth(const ProcessCounts& before, const ProcessCounts& after, size_t heapSlack);
