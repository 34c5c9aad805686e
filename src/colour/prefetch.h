// SPDX-License-Identifier: MIT
#pragma once

#include <xmmintrin.h>

#include <cstddef>
#include <cstdint>

namespace libnivral {
// NOLINTNEXTLINE(google-build-namespaces): every instruction set must keep its own copy of these loops
namespace {

constexpr int32_t kCacheLine = 64;

/// Asks for kBytes at p + offset ahead of their use, which may lie outside the picture: nothing is read then.
/// Rows that are worked on two at a time, or from the last one up, are beyond what the processor guesses.
template <int32_t kBytes>
inline void Prefetch(const uint8_t* p, ptrdiff_t offset) {
  const auto* const at =
      reinterpret_cast<const char*>(reinterpret_cast<uintptr_t>(p) + static_cast<uintptr_t>(offset));
  for (int32_t i = 0; i < kBytes; i += kCacheLine)
    _mm_prefetch(at + i, _MM_HINT_T0);
}

}  // namespace
}  // namespace libnivral
