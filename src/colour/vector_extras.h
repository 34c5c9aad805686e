// SPDX-License-Identifier: MIT
// What the other loops want of vectors besides, and Vec128.
#pragma once

#include <cstddef>
#include <cstdint>

#include "colour/vector_basics.h"

namespace libnivral {
// NOLINTNEXTLINE(google-build-namespaces): every instruction set has its own
namespace {

/// The same 16 bytes in every lane.
inline Vec LoadLane(const void* p);
/// Lane i from p + i * stride.
inline Vec LoadLanes(const uint8_t* p, ptrdiff_t stride);
/// The low 64 bits of every lane to `low`, the high ones to `high`.
inline void StoreHalves(uint8_t* low, uint8_t* high, Vec a);

/// The low 8 bits in every byte.
inline Vec Set8(int32_t a);
/// Pairs of words.
inline Vec SetPairs(int32_t first, int32_t second);
inline Vec Add8(Vec a, Vec b);
inline Vec Add32(Vec a, Vec b);
/// With saturation.
inline Vec SubSigned8(Vec a, Vec b);
inline Vec AddUnsigned16(Vec a, Vec b);
inline Vec SubUnsigned16(Vec a, Vec b);
/// Signed words; Greater16 gives all bits or none.
inline Vec Min16(Vec a, Vec b);
inline Vec Max16(Vec a, Vec b);
inline Vec Greater16(Vec a, Vec b);
inline Vec Abs8(Vec a);
/// a, -a or 0 by the sign of b.
inline Vec Sign16(Vec a, Vec b);
/// The high half of unsigned products of words.
inline Vec MulHighUnsigned(Vec a, Vec b);
/// Sums of the products of two neighbours: of signed words, and of bytes.
inline Vec MulAdd16(Vec a, Vec b);
inline Vec MulAdd8(Vec unsignedBytes, Vec signedBytes);
template <int kBits>
inline Vec ShiftRightSigned16(Vec a);
template <int kBits>
inline Vec ShiftRightSigned32(Vec a);
/// With saturation: in every lane those of a, then those of b.
inline Vec PackSigned8(Vec a, Vec b);
inline Vec PackSigned16(Vec a, Vec b);
inline Vec UnpackLow64(Vec a, Vec b);
inline Vec UnpackHigh64(Vec a, Vec b);
/// In every lane the bytes that the low four bits of `indices` name, 0 where the index is negative.
inline Vec Shuffle8(Vec a, Vec indices);
/// Words of a table, behind which one more may be read.
inline Vec LookUp16(Vec indices, const uint16_t* table);

/// A vector of one lane, for loops that want no wider one.
inline Vec128 Load128(const void* p);
inline void Store128(void* p, Vec128 a);
inline Vec128 Shuffle128(Vec128 a, Vec128 indices);

}  // namespace
}  // namespace libnivral
