// SPDX-License-Identifier: MIT
// What the conversions of planes want of vectors: included by a header of an instruction set after its Vec
// and its size kVecBytes, before it defines these functions. Vectors consist of lanes of 16 bytes, to which
// shuffles, packing and unpacking keep.
#pragma once

#include <cstdint>

namespace libnivral {
// NOLINTNEXTLINE(google-build-namespaces): every instruction set has its own
namespace {

inline Vec Load(const void* p);
/// The bytes from the last to the first.
inline Vec LoadReversed(const uint8_t* p);
inline void Store(void* p, Vec a);
/// Half a vector of bytes as words.
inline Vec LoadBytesAsWords(const uint8_t* p);
/// Half a vector of each, interleaved byte by byte.
inline Vec LoadInterleaved(const uint8_t* first, const uint8_t* second);
/// a, b and c, interleaved byte by byte. In every lane of theirs the bytes of even pixels come first.
inline void StoreInterleaved(uint8_t* out, Vec a, Vec b, Vec c);
/// Where in such vectors the byte of a pixel is.
constexpr int32_t PlaceOfPixel(int32_t pixel) {
  return pixel / 16 * 16 + pixel % 2 * 8 + pixel % 16 / 2;
}
/// The first lanes of all vectors, then the second ones, and so on.
inline void StoreByLane(uint8_t* p, Vec a, Vec b);
inline void StoreByLane(uint8_t* p, Vec a, Vec b, Vec c, Vec d);

inline Vec Zero();
/// The low 16 bits in every word.
inline Vec Set16(int32_t a);
inline Vec And(Vec a, Vec b);
inline Vec Or(Vec a, Vec b);
inline Vec Xor(Vec a, Vec b);
inline Vec Add16(Vec a, Vec b);
inline Vec Sub16(Vec a, Vec b);
/// The low or the high half of signed products of words.
inline Vec MulLow(Vec a, Vec b);
inline Vec MulHigh(Vec a, Vec b);
/// Products of words divided by 32768, rounded to nearest.
inline Vec MulRounded(Vec a, Vec b);
/// x, less one where a is greater than b.
inline Vec LessWhereGreater(Vec x, Vec a, Vec b);
template <int kBits>
inline Vec ShiftLeft16(Vec a);
template <int kBits>
inline Vec ShiftRight16(Vec a);
/// Signed words to unsigned bytes, with saturation: in every lane those of a, then those of b.
inline Vec PackUnsigned8(Vec a, Vec b);
/// The lower or the upper half of every lane, interleaved with b's.
inline Vec UnpackLow8(Vec a, Vec b);
inline Vec UnpackHigh8(Vec a, Vec b);
inline Vec UnpackLow16(Vec a, Vec b);
inline Vec UnpackHigh16(Vec a, Vec b);
inline Vec UnpackLow32(Vec a, Vec b);
inline Vec UnpackHigh32(Vec a, Vec b);

}  // namespace
}  // namespace libnivral
