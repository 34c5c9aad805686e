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
// the high one holding floor(product / 65536) and the low one the rest: a coefficient's whole part multiplies
// apart, its fraction fits a word. The floor of a sum is the sum of the high words and of the carry of the
// low ones, and the carry is one comparison.

/// The share of one colour channel that comes from chroma: the high words, and the low words that luma's may
/// reach without a carry, comparable.
struct ChromaPart {
  Vec high;
  Vec limit;
};

inline ChromaPart MakeChromaPart(Vec high, Vec low) {
  return {high, Comparable(Xor(low, Set16(-1)))};
}

struct ChromaParts {
  ChromaPart blue;
  ChromaPart green;
  ChromaPart red;
};

/// Splits the coefficients: 2 + fraction for blue and red, 0 and 1 - fraction for green.
struct Factors {
  explicit Factors(const YuvCoefficients& c)
      : luma(Set16(c.luma - 0x10000)),
        blueFromU(Set16(c.blueFromU - 0x20000)),
        redFromV(Set16(c.redFromV - 0x20000)),
        greenFromU(Set16(-c.greenFromU)),
        greenFromV(Set16(0x10000 - c.greenFromV)) {}
  Vec luma;
  Vec blueFromU;
  Vec redFromV;
  Vec greenFromU;
  Vec greenFromV;
};

inline ChromaParts ChromaOf(Vec u, Vec v, const Factors& f) {
  u = Sub16(u, Set16(128));
  v = Sub16(v, Set16(128));
  const Vec greenU = MulLow(u, f.greenFromU);
  const Vec green = Add16(greenU, MulLow(v, f.greenFromV));
  const Vec greenHigh = Sub16(Add16(MulHigh(u, f.greenFromU), MulHigh(v, f.greenFromV)), v);
  return {MakeChromaPart(Add16(MulHigh(u, f.blueFromU), Add16(u, u)), MulLow(u, f.blueFromU)),
          MakeChromaPart(Carry(greenHigh, Comparable(greenU), Comparable(green)), green),
          MakeChromaPart(Add16(MulHigh(v, f.redFromV), Add16(v, v)), MulLow(v, f.redFromV))};
}

struct Channels {
  Vec blue;
  Vec green;
  Vec red;
};

/// Words that may lie outside 0 to 255.
inline Channels ToChannels(Vec y, const ChromaParts& chroma, const Factors& f) {
  y = Sub16(y, Set16(16));
  const Vec high = Add16(y, MulHigh(y, f.luma));
  const Vec low = Comparable(MulLow(y, f.luma));
  const auto channel = [&](const ChromaPart& c) { return Carry(Add16(high, c.high), low, c.limit); };
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
void YuvToPixels(const YuvRows& rows, int32_t width, const ConversionTables& tables) {
  const int32_t even = width & ~1;
  if (even < kVecBytes) return (kNarrower.yuv.toPixels.*Out::kKernel)(rows, width, tables);
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
