// SPDX-License-Identifier: MIT
// Walks over rows from either end, and copies of rows that mirror, on vectors of any size. Included by one
// file per instruction set, after its vectors.
#pragma once

#include "colour/kernels.h"
#include "colour/prefetch.h"
#include "colour/vector_basics.h"

namespace libnivral {
// NOLINTNEXTLINE(google-build-namespaces): every instruction set must keep its own copy of these loops
namespace {

constexpr size_t kStep = kVecBytes;

/// Calls `block` for one vector after the other; the last overlaps the one before where the count is no whole
/// number of vectors. There is at least one.
template <size_t kUnrolled, class Block>
inline void ForEachVector(size_t count, Block block) {
  size_t at = 0;
  for (; at + kUnrolled * kStep <= count; at += kUnrolled * kStep)
    for (size_t i = 0; i < kUnrolled; ++i)
      block(at + i * kStep);
  for (; at + kStep <= count; at += kStep)
    block(at);
  if (at < count) block(count - kStep);
}

/// How far ahead of their use lines are asked for.
constexpr ptrdiff_t kAhead = 1024;

struct Identity {
  Vec operator()(Vec a) const { return a; }
};

/// Reads upward and writes downward: the processor fetches ahead of reads only, and row after row they go up.
/// So the lines that will be written one row later, or further down in a single row, are asked for.
template <size_t kUnrolled, class Map>
inline void MapRowsBackward(const ReversedRows& r, const Map& map) {
  const ptrdiff_t next = r.rows > 1 ? static_cast<ptrdiff_t>(r.rowBytes) : -kAhead;
  uint8_t* end = r.out + r.rowBytes - kStep;
  const uint8_t* in = r.in;
  for (size_t row = 0; row < r.rows; ++row, end += r.rowBytes, in += r.rowBytes) {
    ForEachVector<kUnrolled>(r.rowBytes, [&](size_t at) {
      if (at % kCacheLine == 0) {
        Prefetch<1>(end, next - static_cast<ptrdiff_t>(at));
        Prefetch<1>(in, kAhead + static_cast<ptrdiff_t>(at));
      }
      Store(end - at, map(LoadReversed(in + at)));
    });
  }
}

template <const ColourKernels& kNarrower>
void CopyRowsReversed(const ReversedRows& rows) {
  if (rows.rowBytes < kStep) return kNarrower.copyRowsReversed(rows);
  MapRowsBackward<4>(rows, Identity());
}

}  // namespace
}  // namespace libnivral
