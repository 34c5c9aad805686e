// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>

/// What this process holds now. For soak tests: take one after some warm-up rounds and one after the soak.
struct ProcessCounts {
  int threads;
  int handles;
  size_t heapBytes;
  int gdiObjects;
  int windows;  ///< of the calling thread
};

int CountThreads();

/// Taken after a moment in which threads of the system that are on their way out can end.
ProcessCounts CountSettledProcess();

/// EXPECTs that nothing came to `before` but `heapSlack` bytes and the odd handle that systems keep. Drivers' threads
/// end late on a busy machine: up to a minute is waited for that.
void ExpectNoGrowth(const ProcessCounts& before, size_t heapSlack);

/// The counts before that many rounds, after a few that fill caches.
template <class Round>
ProcessCounts CountAfterWarmUp(int rounds, Round&& round) {
  CountSettledProcess();  // the first count loads what it needs itself
  for (int i = 0; i < std::min(1 + rounds / 2, 5); ++i)
    round();
  return CountSettledProcess();
}

/// Heap bytes that rounds keep after those.
template <class Round>
size_t KeptByRounds(int rounds, Round&& round) {
  const size_t before = CountAfterWarmUp(rounds, round).heapBytes;
  for (int i = 0; i < rounds; ++i)
    round();
  const size_t after = CountSettledProcess().heapBytes;
  return after > before ? after - before : 0;
}

/// EXPECTs that rounds keep nothing, after a few that fill caches.
template <class Round>
void ExpectRoundsKeepNothing(int rounds, size_t heapSlack, Round&& round) {
  const ProcessCounts before = CountAfterWarmUp(rounds, round);
  for (int i = 0; i < rounds; ++i)
    round();
  ExpectNoGrowth(before, heapSlack);
}
