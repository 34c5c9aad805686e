// SPDX-License-Identifier: MIT
// 256-bit vectors for the shared loops. Only for files compiled for AVX2: everything has internal linkage, so
// that no copy of it is ever called from code for older processors.
#pragma once

#include <immintrin.h>

#include <cstddef>
#include <cstdint>

namespace libnivral {
// NOLINTNEXTLINE(google-build-namespaces): every instruction set must keep its own copy of these loops
namespace {

using Vec = __m256i;
using Vec128 = __m128i;
constexpr int32_t kVecBytes = 32;

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
  return _mm256_loadu_si256(static_cast<const __m256i*>(p));
}
inline Vec LoadLane(const void* p) {
  return _mm256_broadcastsi128_si256(Load128(p));
}
inline Vec LoadLanes(const uint8_t* p, ptrdiff_t stride) {
  return _mm256_inserti128_si256(_mm256_castsi128_si256(Load128(p)), Load128(p + stride), 1);
}
inline Vec LoadBytesAsWords(const uint8_t* p) {
  return _mm256_cvtepu8_epi16(Load128(p));
}
inline Vec LoadInterleaved(const uint8_t* first, const uint8_t* second) {
  const __m128i a = Load128(first);
  const __m128i b = Load128(second);
  return _mm256_inserti128_si256(_mm256_castsi128_si256(_mm_unpacklo_epi8(a, b)), _mm_unpackhi_epi8(a, b), 1);
}
inline void Store(void* p, Vec a) {
  _mm256_storeu_si256(static_cast<__m256i*>(p), a);
}
inline void StoreByLane(uint8_t* p, Vec a, Vec b) {
  Store(p, _mm256_permute2x128_si256(a, b, 0x20));
  Store(p + 32, _mm256_permute2x128_si256(a, b, 0x31));
}
inline void StoreByLane(uint8_t* p, Vec a, Vec b, Vec c, Vec d) {
  Store(p, _mm256_permute2x128_si256(a, b, 0x20));
  Store(p + 32, _mm256_permute2x128_si256(c, d, 0x20));
  Store(p + 64, _mm256_permute2x128_si256(a, b, 0x31));
  Store(p + 96, _mm256_permute2x128_si256(c, d, 0x31));
}
inline void StoreHalves(uint8_t* low, uint8_t* high, Vec a) {
  const Vec sorted = _mm256_permute4x64_epi64(a, _MM_SHUFFLE(3, 1, 2, 0));
  Store128(low, _mm256_castsi256_si128(sorted));
  Store128(high, _mm256_extracti128_si256(sorted, 1));
}

inline Vec Zero() {
  return _mm256_setzero_si256();
}
inline Vec Set8(int32_t a) {
  return _mm256_set1_epi8(static_cast<char>(a));
}
inline Vec Set16(int32_t a) {
  return _mm256_set1_epi16(static_cast<short>(a));
}
inline Vec SetPairs(int32_t first, int32_t second) {
  return _mm256_set1_epi32(
      static_cast<int32_t>(static_cast<uint32_t>(second) << 16 | static_cast<uint16_t>(first)));
}
inline Vec And(Vec a, Vec b) {
  return _mm256_and_si256(a, b);
}
inline Vec Or(Vec a, Vec b) {
  return _mm256_or_si256(a, b);
}
inline Vec Xor(Vec a, Vec b) {
  return _mm256_xor_si256(a, b);
}
inline Vec Add8(Vec a, Vec b) {
  return _mm256_add_epi8(a, b);
}
inline Vec Add16(Vec a, Vec b) {
  return _mm256_add_epi16(a, b);
}
inline Vec Add32(Vec a, Vec b) {
  return _mm256_add_epi32(a, b);
}
inline Vec Sub16(Vec a, Vec b) {
  return _mm256_sub_epi16(a, b);
}
inline Vec SubSigned8(Vec a, Vec b) {
  return _mm256_subs_epi8(a, b);
}
inline Vec AddUnsigned16(Vec a, Vec b) {
  return _mm256_adds_epu16(a, b);
}
inline Vec SubUnsigned16(Vec a, Vec b) {
  return _mm256_subs_epu16(a, b);
}
inline Vec Min16(Vec a, Vec b) {
  return _mm256_min_epi16(a, b);
}
inline Vec Max16(Vec a, Vec b) {
  return _mm256_max_epi16(a, b);
}
inline Vec Greater16(Vec a, Vec b) {
  return _mm256_cmpgt_epi16(a, b);
}
inline Vec LessWhereGreater(Vec x, Vec a, Vec b) {
  return Add16(x, Greater16(a, b));
}
inline Vec Abs8(Vec a) {
  return _mm256_abs_epi8(a);
}
inline Vec Sign16(Vec a, Vec b) {
  return _mm256_sign_epi16(a, b);
}
inline Vec MulLow(Vec a, Vec b) {
  return _mm256_mullo_epi16(a, b);
}
inline Vec MulHigh(Vec a, Vec b) {
  return _mm256_mulhi_epi16(a, b);
}
inline Vec MulRounded(Vec a, Vec b) {
  return _mm256_mulhrs_epi16(a, b);
}
inline Vec MulHighUnsigned(Vec a, Vec b) {
  return _mm256_mulhi_epu16(a, b);
}
inline Vec MulAdd16(Vec a, Vec b) {
  return _mm256_madd_epi16(a, b);
}
inline Vec MulAdd8(Vec unsignedBytes, Vec signedBytes) {
  return _mm256_maddubs_epi16(unsignedBytes, signedBytes);
}
template <int kBits>
inline Vec ShiftLeft16(Vec a) {
  return _mm256_slli_epi16(a, kBits);
}
template <int kBits>
inline Vec ShiftRight16(Vec a) {
  return _mm256_srli_epi16(a, kBits);
}
template <int kBits>
inline Vec ShiftRightSigned16(Vec a) {
  return _mm256_srai_epi16(a, kBits);
}
template <int kBits>
inline Vec ShiftRightSigned32(Vec a) {
  return _mm256_srai_epi32(a, kBits);
}
inline Vec PackUnsigned8(Vec a, Vec b) {
  return _mm256_packus_epi16(a, b);
}
inline Vec PackSigned8(Vec a, Vec b) {
  return _mm256_packs_epi16(a, b);
}
inline Vec PackSigned16(Vec a, Vec b) {
  return _mm256_packs_epi32(a, b);
}
inline Vec UnpackLow8(Vec a, Vec b) {
  return _mm256_unpacklo_epi8(a, b);
}
inline Vec UnpackHigh8(Vec a, Vec b) {
  return _mm256_unpackhi_epi8(a, b);
}
inline Vec UnpackLow16(Vec a, Vec b) {
  return _mm256_unpacklo_epi16(a, b);
}
inline Vec UnpackHigh16(Vec a, Vec b) {
  return _mm256_unpackhi_epi16(a, b);
}
inline Vec UnpackLow32(Vec a, Vec b) {
  return _mm256_unpacklo_epi32(a, b);
}
inline Vec UnpackHigh32(Vec a, Vec b) {
  return _mm256_unpackhi_epi32(a, b);
}
inline Vec UnpackLow64(Vec a, Vec b) {
  return _mm256_unpacklo_epi64(a, b);
}
inline Vec UnpackHigh64(Vec a, Vec b) {
  return _mm256_unpackhi_epi64(a, b);
}
inline Vec Shuffle8(Vec a, Vec indices) {
  return _mm256_shuffle_epi8(a, indices);
}
/// The word behind each is read, too, and dropped.
inline Vec LookUp16(Vec indices, const uint16_t* table) {
  const auto* const words = reinterpret_cast<const int*>(table);
  const Vec low = _mm256_i32gather_epi32(words, UnpackLow16(indices, Zero()), 2);
  const Vec high = _mm256_i32gather_epi32(words, UnpackHigh16(indices, Zero()), 2);
  const Vec word = _mm256_set1_epi32(0xFFFF);
  return _mm256_packus_epi32(And(low, word), And(high, word));
}

/// Puts pixel p of a lane at byte (3 * p + channel) modulo 16, where it is in one of the three output
/// registers, and says which bytes of each output register belong to which channel.
struct InterleaveMasks {
  alignas(16) uint8_t place[3][16];
  alignas(16) uint8_t isSecond[3][16];
  alignas(16) uint8_t isThird[3][16];
};
constexpr InterleaveMasks MakeInterleaveMasks() {
  InterleaveMasks m{};
  for (int32_t part = 0; part < 3; ++part)
    for (int32_t i = 0; i < 16; ++i) {
      // 11 is the inverse of 3 modulo 16.
      m.place[part][i] = static_cast<uint8_t>(PlaceOfPixel((i + 16 - part) * 11 % 16));
      m.isSecond[part][i] = (part * 16 + i) % 3 == 1 ? 0xFF : 0;
      m.isThird[part][i] = (part * 16 + i) % 3 == 2 ? 0xFF : 0;
    }
  return m;
}
constexpr InterleaveMasks kInterleave = MakeInterleaveMasks();

/// The bytes of b where the mask's lane has its bits set, else those of a.
inline Vec SelectBytes(Vec a, Vec b, const uint8_t* mask) {
  return _mm256_blendv_epi8(a, b, LoadLane(mask));
}

/// One of the three output registers of every lane.
template <int kPart>
inline Vec InterleavedPart(Vec a, Vec b, Vec c) {
  return SelectBytes(SelectBytes(a, b, kInterleave.isSecond[kPart]), c, kInterleave.isThird[kPart]);
}

inline void StoreInterleaved(uint8_t* out, Vec a, Vec b, Vec c) {
  a = Shuffle8(a, LoadLane(kInterleave.place[0]));
  b = Shuffle8(b, LoadLane(kInterleave.place[1]));
  c = Shuffle8(c, LoadLane(kInterleave.place[2]));
  const Vec first = InterleavedPart<0>(a, b, c);
  const Vec second = InterleavedPart<1>(a, b, c);
  const Vec third = InterleavedPart<2>(a, b, c);
  Store(out, _mm256_permute2x128_si256(first, second, 0x20));
  Store(out + 32, _mm256_blend_epi32(third, first, 0xF0));
  Store(out + 64, _mm256_permute2x128_si256(second, third, 0x31));
}

}  // namespace
}  // namespace libnivral
