// SPDX-License-Identifier: MIT
// 512-bit vectors for the conversions and mirrors of planes, with the byte permutations of VBMI. Only for
// files compiled for AVX-512: everything has internal linkage, so that no copy of it is ever called from code
// for older processors.
#pragma once

#include <immintrin.h>

#include <cstddef>
#include <cstdint>

namespace libnivral {
// NOLINTNEXTLINE(google-build-namespaces): every instruction set must keep its own copy of these loops
namespace {

using Vec = __m512i;
constexpr int32_t kVecBytes = 64;

}  // namespace
}  // namespace libnivral

#include "colour/vector_basics.h"

namespace libnivral {
// NOLINTNEXTLINE(google-build-namespaces): as above
namespace {

inline __m256i Load256(const void* p) {
  return _mm256_loadu_si256(static_cast<const __m256i*>(p));
}
inline Vec Load(const void* p) {
  return _mm512_loadu_si512(p);
}
inline void Store(void* p, Vec a) {
  _mm512_storeu_si512(p, a);
}

/// A choice among the bytes of one vector or two, for every byte of a result.
struct ByteChoice {
  alignas(64) uint8_t bytes[64];
};
template <class Choose>
constexpr ByteChoice MakeChoice(Choose choose) {
  ByteChoice choice{};
  for (int32_t i = 0; i < kVecBytes; ++i)
    choice.bytes[i] = static_cast<uint8_t>(choose(i));
  return choice;
}
constexpr ByteChoice kBackward = MakeChoice([](int32_t i) { return kVecBytes - 1 - i; });
constexpr ByteChoice kInterleavedPairs = MakeChoice([](int32_t i) { return i / 2 + i % 2 * kVecBytes; });

inline Vec LoadBytesAsWords(const uint8_t* p) {
  return _mm512_cvtepu8_epi16(Load256(p));
}
inline Vec LoadReversed(const uint8_t* p) {
  return _mm512_permutexvar_epi8(Load(kBackward.bytes), Load(p));
}
inline Vec LoadInterleaved(const uint8_t* first, const uint8_t* second) {
  return _mm512_permutex2var_epi8(_mm512_castsi256_si512(Load256(first)), Load(kInterleavedPairs.bytes),
                                  _mm512_castsi256_si512(Load256(second)));
}
inline void StoreByLane(uint8_t* p, Vec a, Vec b) {
  Store(p, _mm512_permutex2var_epi64(a, _mm512_setr_epi64(0, 1, 8, 9, 2, 3, 10, 11), b));
  Store(p + 64, _mm512_permutex2var_epi64(a, _mm512_setr_epi64(4, 5, 12, 13, 6, 7, 14, 15), b));
}
inline void StoreByLane(uint8_t* p, Vec a, Vec b, Vec c, Vec d) {
  const Vec lowAb = _mm512_shuffle_i64x2(a, b, 0x44);
  const Vec lowCd = _mm512_shuffle_i64x2(c, d, 0x44);
  const Vec highAb = _mm512_shuffle_i64x2(a, b, 0xEE);
  const Vec highCd = _mm512_shuffle_i64x2(c, d, 0xEE);
  Store(p, _mm512_shuffle_i64x2(lowAb, lowCd, 0x88));
  Store(p + 64, _mm512_shuffle_i64x2(lowAb, lowCd, 0xDD));
  Store(p + 128, _mm512_shuffle_i64x2(highAb, highCd, 0x88));
  Store(p + 192, _mm512_shuffle_i64x2(highAb, highCd, 0xDD));
}

inline Vec Zero() {
  return _mm512_setzero_si512();
}
inline Vec Set16(int32_t a) {
  return _mm512_set1_epi16(static_cast<short>(a));
}
inline Vec And(Vec a, Vec b) {
  return _mm512_and_si512(a, b);
}
inline Vec Or(Vec a, Vec b) {
  return _mm512_or_si512(a, b);
}
inline Vec Xor(Vec a, Vec b) {
  return _mm512_xor_si512(a, b);
}
inline Vec Add16(Vec a, Vec b) {
  return _mm512_add_epi16(a, b);
}
inline Vec Sub16(Vec a, Vec b) {
  return _mm512_sub_epi16(a, b);
}
inline Vec MulLow(Vec a, Vec b) {
  return _mm512_mullo_epi16(a, b);
}
inline Vec MulHigh(Vec a, Vec b) {
  return _mm512_mulhi_epi16(a, b);
}
inline Vec MulRounded(Vec a, Vec b) {
  return _mm512_mulhrs_epi16(a, b);
}
inline Vec LessWhereGreater(Vec x, Vec a, Vec b) {
  return _mm512_mask_add_epi16(x, _mm512_cmpgt_epi16_mask(a, b), x, Set16(-1));
}
template <int kBits>
inline Vec ShiftLeft16(Vec a) {
  return _mm512_slli_epi16(a, kBits);
}
template <int kBits>
inline Vec ShiftRight16(Vec a) {
  return _mm512_srli_epi16(a, kBits);
}
inline Vec PackUnsigned8(Vec a, Vec b) {
  return _mm512_packus_epi16(a, b);
}
inline Vec UnpackLow8(Vec a, Vec b) {
  return _mm512_unpacklo_epi8(a, b);
}
inline Vec UnpackHigh8(Vec a, Vec b) {
  return _mm512_unpackhi_epi8(a, b);
}
inline Vec UnpackLow16(Vec a, Vec b) {
  return _mm512_unpacklo_epi16(a, b);
}
inline Vec UnpackHigh16(Vec a, Vec b) {
  return _mm512_unpackhi_epi16(a, b);
}
inline Vec UnpackLow32(Vec a, Vec b) {
  return _mm512_unpacklo_epi32(a, b);
}
inline Vec UnpackHigh32(Vec a, Vec b) {
  return _mm512_unpackhi_epi32(a, b);
}

/// Of three bytes interleaved: which one of its vector stands at byte i of the output's part.
template <int32_t kPart>
constexpr ByteChoice kThird = MakeChoice([](int32_t i) { return PlaceOfPixel((kPart * kVecBytes + i) / 3); });
/// And which bytes are of the second or third vector.
constexpr uint64_t BytesOf(int32_t channel, int32_t part) {
  uint64_t mask = 0;
  for (int32_t i = 0; i < kVecBytes; ++i)
    mask |= uint64_t{(part * kVecBytes + i) % 3 == channel} << i;
  return mask;
}

template <int32_t kPart>
inline Vec InterleavedPart(Vec a, Vec b, Vec c) {
  const Vec choice = Load(kThird<kPart>.bytes);
  constexpr uint64_t kSecond = BytesOf(1, kPart);
  constexpr uint64_t kLast = BytesOf(2, kPart);
  const Vec ab = _mm512_mask_permutexvar_epi8(_mm512_permutexvar_epi8(choice, a), kSecond, choice, b);
  return _mm512_mask_permutexvar_epi8(ab, kLast, choice, c);
}

inline void StoreInterleaved(uint8_t* out, Vec a, Vec b, Vec c) {
  Store(out, InterleavedPart<0>(a, b, c));
  Store(out + 64, InterleavedPart<1>(a, b, c));
  Store(out + 128, InterleavedPart<2>(a, b, c));
}

}  // namespace
}  // namespace libnivral
