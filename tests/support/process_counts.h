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

/// Whether anything came to `before` but `heapSlack` bytes and the odd handle that systems keep.
bool HasGrown(const ProcessCounts& before, const ProcessCounts& after, size_t heapSlack);

/// EXPECTs that nothing came to it.
void ExpectNoGrowth(const ProcessCounts& before, const ProcessCounts& after, size_t heapSlack);

/// EXPECTs that rounds keep nothing, after a few that fill caches.
template <class Round>
void ExpectRoundsKeepNothing(int rounds, size_t heapSlack, Round&& round) {
  for (int i = 0; i < 5; ++i)
    round();
  const ProcessCounts before = CountSettledProcess();
  for (int i = 0; i < rounds; ++i)
    round();
  ExpectNoGrowth(before, CountSettledProcess(), heapSlack);
}
