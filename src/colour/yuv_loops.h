// SPDX-License-Identifier: MIT
// The conversions of planes on vectors of any size. Included by one file per instruction set, after its
// vectors.
#pragma once

#include "colour/conversion_tables.h"
#include "colour/kernels.h"
#include "colour/prefetch.h"
#include "colour/vector_basics.h"

namespace libnivral {
// NOLINTNEXTLINE(google-build-namespaces): every instruction set must keep its own copy of these loops
namespace {

/// Calls `block` for consecutive blocks of a row; the last one overlaps the one before where the row is no
/// whole number of blocks. The row has at least one block.
template <class Block>
inline void ForEachBlock(int32_t count, int32_t step, Block block) {
  const int32_t last = count - step;
  for (int32_t at = 0;;) {
    block(at);
    if (at == last) return;
    at = at + step < last ? at + step : last;
  }
}

// A sum of products needs 16 fraction bits and up to 10 bits before them. Each product is kept as two words,
// the high one holding product / 65536 rounded to nearest and the low one, signed, the rest: a coefficient's
// whole part multiplies apart, its fraction fits a word. Chroma's low words are kept negative: the floor of a
// sum of luma and chroma is the sum of the high words, less one where chroma's low word is above luma's.

/// A fraction in the forms for high and low words. The high word would need half of it, and does not notice
/// that an odd one's half is cut off: no product with a sample comes that close to where rounding changes.
struct Factor {
  Factor(int32_t fraction, int32_t sign) : half(Set16(fraction >> 1)), low(Set16(fraction * sign)) {}
  Vec half;
  Vec low;
};

/// Splits the coefficients: 2 + fraction for blue and red, 0 and 1 - fraction for green.
struct Factors {
  explicit Factors(const YuvCoefficients& c)
      : luma(c.luma - 0x10000, 1),
        blueFromU(c.blueFromU - 0x20000, -1),
        redFromV(c.redFromV - 0x20000, -1),
        greenFromU(-c.greenFromU, -1),
        minusGreenFromV(Set16(c.greenFromV - 0x10000)) {}
  Factor luma;
  Factor blueFromU;
  Factor redFromV;
  Factor greenFromU;
  Vec minusGreenFromV;
};

/// The share of one colour channel that comes from chroma.
struct ChromaPart {
  Vec high;
  Vec minusLow;
};

struct ChromaParts {
  ChromaPart blue;
  ChromaPart green;
  ChromaPart red;
};

/// (2 + fraction) * chroma.
inline ChromaPart TwiceAndMore(Vec chroma, const Factor& f) {
  return {Add16(MulRounded(chroma, f.half), Add16(chroma, chroma)), MulLow(chroma, f.low)};
}

/// U's low words are signed and V's, whose products are floored, unsigned. So their sum as a signed word is
/// right or 65536 too small, and then it is below V's less 32768, the least that U's can make of it.
inline ChromaPart GreenPart(Vec u, Vec v, const Factors& f) {
  const Vec fromV = MulLow(v, f.minusGreenFromV);
  const Vec sum = Add16(MulLow(u, f.greenFromU.low), fromV);
  const Vec high = Sub16(MulRounded(u, f.greenFromU.half), Add16(v, MulHigh(v, f.minusGreenFromV)));
  return {LessWhereGreater(high, Xor(fromV, Set16(0x8000)), sum), sum};
}

inline ChromaParts ChromaOf(Vec u, Vec v, const Factors& f) {
  u = Sub16(u, Set16(128));
  v = Sub16(v, Set16(128));
  return {TwiceAndMore(u, f.blueFromU), GreenPart(u, v, f), TwiceAndMore(v, f.redFromV)};
}

struct Channels {
  Vec blue;
  Vec green;
  Vec red;
};

/// Words that may lie outside 0 to 255.
inline Channels ToChannels(Vec y, const ChromaParts& chroma, const Factors& f) {
  y = Sub16(y, Set16(16));
  const Vec high = Add16(y, MulRounded(y, f.luma.half));
  const Vec low = MulLow(y, f.luma.low);
  const auto channel = [&](const ChromaPart& c) {
    return LessWhereGreater(Add16(high, c.high), c.minusLow, low);
  };
  return {channel(chroma.blue), channel(chroma.green), channel(chroma.red)};
}

// A chroma sample is for an even pixel and the odd one after it, so that in words, which hold every other
// pixel, it stands where both do.

inline Vec EvenBytes(Vec a) {
  return And(a, Set16(0xFF));
}
inline Vec OddBytes(Vec a) {
  return ShiftRight16<8>(a);
}

struct Bgr24Out {
  static constexpr auto kKernel = &PixelKernels::bgr24;
  static constexpr ptrdiff_t kPixelBytes = 3;
  static void Put(uint8_t* out, const Channels& c) { StoreInterleaved(out, c.blue, c.green, c.red); }
};

struct Bgrx32Out {
  static constexpr auto kKernel = &PixelKernels::bgrx32;
  static constexpr ptrdiff_t kPixelBytes = 4;
  static void Put(uint8_t* out, const Channels& c) {
    const Vec evenBg = UnpackLow8(c.blue, c.green);
    const Vec oddBg = UnpackHigh8(c.blue, c.green);
    const Vec evenR = UnpackLow8(c.red, Zero());
    const Vec oddR = UnpackHigh8(c.red, Zero());
    const Vec evenLow = UnpackLow16(evenBg, evenR);
    const Vec evenHigh = UnpackHigh16(evenBg, evenR);
    const Vec oddLow = UnpackLow16(oddBg, oddR);
    const Vec oddHigh = UnpackHigh16(oddBg, oddR);
    StoreByLane(out, UnpackLow32(evenLow, oddLow), UnpackHigh32(evenLow, oddLow),
                UnpackLow32(evenHigh, oddHigh), UnpackHigh32(evenHigh, oddHigh));
  }
};

/// Words of 5 bits red, kGreenBits green and 5 bits blue.
template <YuvRowsKernel PixelKernels::*kMember, int kGreenBits>
struct Rgb16Out {
  static constexpr auto kKernel = kMember;
  static constexpr ptrdiff_t kPixelBytes = 2;

  /// From words: blue and green as they are, red in the high byte.
  static Vec Pack(Vec blue, Vec green, Vec highRed) {
    const Vec red = And(ShiftRight16<6 - kGreenBits>(highRed), Set16(0x1F << (5 + kGreenBits)));
    const Vec middle = ShiftLeft16<kGreenBits - 3>(And(green, Set16(0x100 - (0x100 >> kGreenBits))));
    return Or(Or(red, middle), ShiftRight16<3>(blue));
  }
  static void Put(uint8_t* out, const Channels& c) {
    const Vec even = Pack(UnpackLow8(c.blue, Zero()), UnpackLow8(c.green, Zero()), UnpackLow8(Zero(), c.red));
    const Vec odd =
        Pack(UnpackHigh8(c.blue, Zero()), UnpackHigh8(c.green, Zero()), UnpackHigh8(Zero(), c.red));
    StoreByLane(out, UnpackLow16(even, odd), UnpackHigh16(even, odd));
  }
};
using Rgb565Out = Rgb16Out<&PixelKernels::rgb565, 6>;
using Rgb555Out = Rgb16Out<&PixelKernels::rgb555, 5>;

/// Bytes: in every lane those of the even pixels, then those of the odd ones.
inline Channels PackChannels(const Channels& even, const Channels& odd) {
  return {PackUnsigned8(even.blue, odd.blue), PackUnsigned8(even.green, odd.green),
          PackUnsigned8(even.red, odd.red)};
}

/// Pictures up to about this width stay in the processor's own caches, where asking ahead only costs.
constexpr int32_t kCachedWidth = 1024;

/// Rows too short for a vector are left to the narrower form.
template <class Out, const ColourKernels& kNarrower>
void YuvToPixels(const YuvRows& twoRows, int32_t width, const ConversionTables& tables) {
  const int32_t even = width & ~1;
  if (even < kVecBytes) return (kNarrower.yuv.toPixels.*Out::kKernel)(twoRows, width, tables);
  const YuvRows rows = twoRows;  // a copy, which no store can change
  const Factors factors(tables.coefficients);
  const ptrdiff_t pitch = rows.out[1] - rows.out[0];
  const bool isLarge = width > kCachedWidth;
  ForEachBlock(even, kVecBytes, [&](int32_t x) {
    if (isLarge && x % kCacheLine < kVecBytes) {
      Prefetch<kCacheLine>(rows.y[0], 2 * (rows.y[1] - rows.y[0]) + x);
      Prefetch<kCacheLine>(rows.y[1], 2 * (rows.y[1] - rows.y[0]) + x);
      Prefetch<kCacheLine * Out::kPixelBytes>(rows.out[0], 2 * pitch + x * Out::kPixelBytes);
      Prefetch<kCacheLine * Out::kPixelBytes>(rows.out[1], 2 * pitch + x * Out::kPixelBytes);
    }
    const ChromaParts chroma =
        ChromaOf(LoadBytesAsWords(rows.u + x / 2), LoadBytesAsWords(rows.v + x / 2), factors);
    for (int row = 0; row < 2; ++row) {
      const Vec y = Load(rows.y[row] + x);
      Out::Put(rows.out[row] + x * Out::kPixelBytes, PackChannels(ToChannels(EvenBytes(y), chroma, factors),
                                                                  ToChannels(OddBytes(y), chroma, factors)));
    }
  });
}

template <const ColourKernels& kNarrower>
void YuvTo422(uint8_t* out, const uint8_t* y, const uint8_t* u, const uint8_t* v, int32_t width) {
  const int32_t even = width & ~1;
  if (even < kVecBytes) return kNarrower.yuv.to422(out, y, u, v, width);
  ForEachBlock(even, kVecBytes, [&](int32_t x) {
    const Vec luma = Load(y + x);
    const Vec chroma = LoadInterleaved(u + x / 2, v + x / 2);
    StoreByLane(out + ptrdiff_t{x} * 2, UnpackLow8(chroma, luma), UnpackHigh8(chroma, luma));
  });
}

template <const ColourKernels& kNarrower>
constexpr YuvKernels kYuvKernels = {
    .toPixels = {.bgr24 = YuvToPixels<Bgr24Out, kNarrower>,
                 .bgrx32 = YuvToPixels<Bgrx32Out, kNarrower>,
                 .rgb565 = YuvToPixels<Rgb565Out, kNarrower>,
                 .rgb555 = YuvToPixels<Rgb555Out, kNarrower>},
    .to422 = YuvTo422<kNarrower>,
};

}  // namespace
}  // namespace libnivral
