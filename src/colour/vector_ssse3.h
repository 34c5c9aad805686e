// SPDX-License-Identifier: MIT
// 128-bit vectors for the shared loops. Only for files compiled for SSSE3: everything has internal linkage,
// so that no copy of it is ever called from code for older processors.
#pragma once

#include <tmmintrin.h>

#include <cstddef>
#include <cstdint>

namespace libnivral {
// NOLINTNEXTLINE(google-build-namespaces): every instruction set must keep its own copy of these loops
namespace {

using Vec = __m128i;
using Vec128 = __m128i;
constexpr int32_t kVecBytes = 16;

}  // namespace
}  // namespace libnivral

#include "colour/vector_extras.h"

namespace libnivral {
// NOLINTNEXTLINE(google-build-namespaces): as above
namespace {

inline Vec128 Load128(const void* p) {
  return _mm_loadu_si128(static_cast<const __m128i*>(p));
}
inline void Store128(void* p, Vec128 a) {
  _mm_storeu_si128(static_cast<__m128i*>(p), a);
}
inline Vec128 Shuffle128(Vec128 a, Vec128 indices) {
  return _mm_shuffle_epi8(a, indices);
}

inline Vec Load(const void* p) {
  return Load128(p);
}
inline Vec LoadLane(const void* p) {
  return Load128(p);
}
inline Vec LoadLanes(const uint8_t* p, ptrdiff_t) {
  return Load128(p);
}
inline Vec LoadBytesAsWords(const uint8_t* p) {
  return _mm_unpacklo_epi8(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)), _mm_setzero_si128());
}
inline Vec LoadInterleaved(const uint8_t* first, const uint8_t* second) {
  return _mm_unpacklo_epi8(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(first)),
                           _mm_loadl_epi64(reinterpret_cast<const __m128i*>(second)));
}
inline void Store(void* p, Vec a) {
  Store128(p, a);
}
inline void StoreByLane(uint8_t* p, Vec a, Vec b) {
  Store128(p, a);
  Store128(p + 16, b);
}
inline void StoreByLane(uint8_t* p, Vec a, Vec b, Vec c, Vec d) {
  StoreByLane(p, a, b);
  StoreByLane(p + 32, c, d);
}
inline void StoreHalves(uint8_t* low, uint8_t* high, Vec a) {
  _mm_storel_epi64(reinterpret_cast<__m128i*>(low), a);
  _mm_storel_epi64(reinterpret_cast<__m128i*>(high), _mm_unpackhi_epi64(a, a));
}

inline Vec Zero() {
  return _mm_setzero_si128();
}
inline Vec Set8(int32_t a) {
  return _mm_set1_epi8(static_cast<char>(a));
}
inline Vec Set16(int32_t a) {
  return _mm_set1_epi16(static_cast<short>(a));
}
inline Vec SetPairs(int32_t first, int32_t second) {
  return _mm_set1_epi32(
      static_cast<int32_t>(static_cast<uint32_t>(second) << 16 | static_cast<uint16_t>(first)));
}
inline Vec And(Vec a, Vec b) {
  return _mm_and_si128(a, b);
}
inline Vec Or(Vec a, Vec b) {
  return _mm_or_si128(a, b);
}
inline Vec Xor(Vec a, Vec b) {
  return _mm_xor_si128(a, b);
}
inline Vec Add8(Vec a, Vec b) {
  return _mm_add_epi8(a, b);
}
inline Vec Add16(Vec a, Vec b) {
  return _mm_add_epi16(a, b);
}
inline Vec Add32(Vec a, Vec b) {
  return _mm_add_epi32(a, b);
}
inline Vec Sub16(Vec a, Vec b) {
  return _mm_sub_epi16(a, b);
}
inline Vec SubSigned8(Vec a, Vec b) {
  return _mm_subs_epi8(a, b);
}
inline Vec AddUnsigned16(Vec a, Vec b) {
  return _mm_adds_epu16(a, b);
}
inline Vec SubUnsigned16(Vec a, Vec b) {
  return _mm_subs_epu16(a, b);
}
inline Vec Min16(Vec a, Vec b) {
  return _mm_min_epi16(a, b);
}
inline Vec Max16(Vec a, Vec b) {
  return _mm_max_epi16(a, b);
}
inline Vec Greater16(Vec a, Vec b) {
  return _mm_cmpgt_epi16(a, b);
}
inline Vec LessWhereGreater(Vec x, Vec a, Vec b) {
  return Add16(x, Greater16(a, b));
}
inline Vec Abs8(Vec a) {
  return _mm_abs_epi8(a);
}
inline Vec Sign16(Vec a, Vec b) {
  return _mm_sign_epi16(a, b);
}
inline Vec MulLow(Vec a, Vec b) {
  return _mm_mullo_epi16(a, b);
}
inline Vec MulHigh(Vec a, Vec b) {
  return _mm_mulhi_epi16(a, b);
}
inline Vec MulRounded(Vec a, Vec b) {
  return _mm_mulhrs_epi16(a, b);
}
inline Vec MulHighUnsigned(Vec a, Vec b) {
  return _mm_mulhi_epu16(a, b);
}
inline Vec MulAdd16(Vec a, Vec b) {
  return _mm_madd_epi16(a, b);
}
inline Vec MulAdd8(Vec unsignedBytes, Vec signedBytes) {
  return _mm_maddubs_epi16(unsignedBytes, signedBytes);
}
template <int kBits>
inline Vec ShiftLeft16(Vec a) {
  return _mm_slli_epi16(a, kBits);
}
template <int kBits>
inline Vec ShiftRight16(Vec a) {
  return _mm_srli_epi16(a, kBits);
}
template <int kBits>
inline Vec ShiftRightSigned16(Vec a) {
  return _mm_srai_epi16(a, kBits);
}
template <int kBits>
inline Vec ShiftRightSigned32(Vec a) {
  return _mm_srai_epi32(a, kBits);
}
inline Vec PackUnsigned8(Vec a, Vec b) {
  return _mm_packus_epi16(a, b);
}
inline Vec PackSigned8(Vec a, Vec b) {
  return _mm_packs_epi16(a, b);
}
inline Vec PackSigned16(Vec a, Vec b) {
  return _mm_packs_epi32(a, b);
}
inline Vec UnpackLow8(Vec a, Vec b) {
  return _mm_unpacklo_epi8(a, b);
}
inline Vec UnpackHigh8(Vec a, Vec b) {
  return _mm_unpackhi_epi8(a, b);
}
inline Vec UnpackLow16(Vec a, Vec b) {
  return _mm_unpacklo_epi16(a, b);
}
inline Vec UnpackHigh16(Vec a, Vec b) {
  return _mm_unpackhi_epi16(a, b);
}
inline Vec UnpackLow32(Vec a, Vec b) {
  return _mm_unpacklo_epi32(a, b);
}
inline Vec UnpackHigh32(Vec a, Vec b) {
  return _mm_unpackhi_epi32(a, b);
}
inline Vec UnpackLow64(Vec a, Vec b) {
  return _mm_unpacklo_epi64(a, b);
}
inline Vec UnpackHigh64(Vec a, Vec b) {
  return _mm_unpackhi_epi64(a, b);
}
inline Vec Shuffle8(Vec a, Vec indices) {
  return _mm_shuffle_epi8(a, indices);
}
/// Four words at once in a general register: the table is too large for shuffles.
inline long long LookUpFour(uint64_t indices, const uint16_t* table) {
  const uint64_t low = table[indices & 0xFFFF] | uint64_t{table[indices >> 16 & 0xFFFF]} << 16;
  const uint64_t high = table[indices >> 32 & 0xFFFF] | uint64_t{table[indices >> 48]} << 16;
  return static_cast<long long>(low | high << 32);
}

inline Vec LookUp16(Vec indices, const uint16_t* table) {
  alignas(16) uint64_t quads[2];
  Store(quads, indices);
  return _mm_set_epi64x(LookUpFour(quads[1], table), LookUpFour(quads[0], table));
}

/// Where each byte of 16 pixels comes from in the three output registers; 0x80 gives zero.
struct InterleaveMasks {
  alignas(16) uint8_t bytes[3][3][16];
};
constexpr InterleaveMasks MakeInterleaveMasks() {
  InterleaveMasks m{};
  for (int32_t part = 0; part < 3; ++part)
    for (int32_t channel = 0; channel < 3; ++channel)
      for (int32_t i = 0; i < 16; ++i) {
        const int32_t at = part * 16 + i;
        m.bytes[part][channel][i] = static_cast<uint8_t>(at % 3 == channel ? PlaceOfPixel(at / 3) : 0x80);
      }
  return m;
}
constexpr InterleaveMasks kInterleave = MakeInterleaveMasks();

/// Only an aligned mask can be an operand without a load of its own.
inline void StoreInterleaved(uint8_t* out, Vec a, Vec b, Vec c) {
  for (int32_t part = 0; part < 3; ++part) {
    const auto* const masks = reinterpret_cast<const __m128i*>(kInterleave.bytes[part]);
    const Vec ab = Or(Shuffle8(a, _mm_load_si128(masks)), Shuffle8(b, _mm_load_si128(masks + 1)));
    Store(out + part * 16, Or(ab, Shuffle8(c, _mm_load_si128(masks + 2))));
  }
}

}  // namespace
}  // namespace libnivral
