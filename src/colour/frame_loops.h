// SPDX-License-Identifier: MIT
// Copies of planes that map and mirror on vectors of any size. Included by one file per instruction set,
// after its vectors.
#pragma once

#include "colour/byte_map.h"
#include "colour/row_loops.h"
#include "colour/vector_extras.h"

namespace libnivral {
// NOLINTNEXTLINE(google-build-namespaces): every instruction set must keep its own copy of these loops
namespace {

struct ByteOrder {
  alignas(16) uint8_t bytes[16];
};
constexpr ByteOrder kBackward = {{15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0}};

/// The lanes change places while they are loaded, which leaves one shuffle instead of two.
inline Vec LoadReversed(const uint8_t* p) {
  return Shuffle8(LoadLanes(p + kStep - 16, -16), LoadLane(kBackward.bytes));
}

/// LinearMap on words; no table is read. Each offset is either added or subtracted.
template <bool kAddAbove, bool kAddBelow>
struct Linear {
  explicit Linear(const LinearMap& map)
      : m_fill(Set8(map.fill)),
        m_factor(Set16(map.factor)),
        m_above(Set16(kAddAbove ? map.addAbove : map.subAbove)),
        m_below(Set16(kAddBelow ? map.addBelow : map.subBelow)) {}

  Vec Words(Vec wide) const {
    const Vec p = MulHighUnsigned(wide, m_factor);
    const Vec above = ShiftRight16<7>(Shifted<kAddAbove>(p, m_above));
    const Vec below = ShiftRight16<7>(Shifted<kAddBelow>(p, m_below));
    return Max16(above, Min16(below, Set16(128)));
  }
  Vec operator()(Vec a) const {
    return PackUnsigned8(Words(UnpackLow8(m_fill, a)), Words(UnpackHigh8(m_fill, a)));
  }

 private:
  template <bool kAdd>
  static Vec Shifted(Vec p, Vec offset) {
    return kAdd ? AddUnsigned16(p, offset) : SubUnsigned16(p, offset);
  }

  Vec m_fill;
  Vec m_factor;
  Vec m_above;
  Vec m_below;
};

/// Calls `loop` with the form of Linear that the map's offsets want.
template <class Loop>
void WithLinear(const LinearMap& map, Loop loop) {
  if (map.subAbove == 0) {
    map.subBelow == 0 ? loop(Linear<true, true>(map)) : loop(Linear<true, false>(map));
  } else {
    map.subBelow == 0 ? loop(Linear<false, true>(map)) : loop(Linear<false, false>(map));
  }
}

/// OddSymmetricMap on words.
struct OddSymmetric {
  explicit OddSymmetric(const OddSymmetricMap& map)
      : m_first(Set16(map.factors[0])), m_second(Set16(map.factors[1])) {}

  /// Rounded distances with their signs; those beyond a byte are left to the packing.
  Vec Words(Vec distance, Vec sign) const {
    distance = MulHighUnsigned(Add16(distance, distance), m_first);
    distance = MulHighUnsigned(Add16(distance, distance), m_second);
    return Sign16(distance, sign);
  }
  Vec operator()(Vec a) const {
    const Vec centred = Xor(a, Set8(0x80));
    const Vec distance = Abs8(centred);
    return Xor(PackSigned8(Words(UnpackLow8(distance, Zero()), UnpackLow8(Zero(), centred)),
                           Words(UnpackHigh8(distance, Zero()), UnpackHigh8(Zero(), centred))),
               Set8(0x80));
  }

 private:
  Vec m_first;
  Vec m_second;
};

/// The table in sixteen shuffles. A shuffle gives zero where the index is negative, so counting the index
/// down by 16 leaves sixteenth k in force for every byte from 16 * k on; with each sixteenth stored as its
/// difference to the one before, the exclusive-or of all that are in force is the table's value.
struct Table {
  explicit Table(const ByteMap& map) : m_steps(map.steps) {}

  static Vec Half(Vec index, const uint8_t* steps) {
    Vec sum = Shuffle8(LoadLane(steps), index);
    for (int32_t k = 1; k < 8; ++k) {
      index = SubSigned8(index, Set8(16));
      sum = Xor(sum, Shuffle8(LoadLane(steps + k * 16), index));
    }
    return sum;
  }
  Vec operator()(Vec a) const { return Xor(Half(a, m_steps), Half(Xor(a, Set8(0x80)), m_steps + 128)); }

 private:
  const uint8_t* m_steps;
};

template <size_t kUnrolled, class Map>
inline void MapForward(uint8_t* out, const uint8_t* in, size_t count, const Map& map) {
  ForEachVector<kUnrolled>(count, [&](size_t at) {
    if (at % kCacheLine == 0) {
      Prefetch<1>(out, kAhead + static_cast<ptrdiff_t>(at));
      Prefetch<1>(in, kAhead + static_cast<ptrdiff_t>(at));
    }
    Store(out + at, map(Load(in + at)));
  });
}

void MapBytes(uint8_t* out, const uint8_t* in, size_t count, const ByteMap& map) {
  if (count < kStep) return kScalarKernels.mapBytes(out, in, count, map);
  if (map.form == ByteMap::Form::Linear) {
    return WithLinear(map.linear, [&](const auto& linear) { MapForward<2>(out, in, count, linear); });
  }
  if (map.form == ByteMap::Form::OddSymmetric) return MapForward<2>(out, in, count, OddSymmetric(map.odd));
  MapForward<1>(out, in, count, Table(map));
}

void MapRowsReversed(const ReversedRows& rows, const ByteMap& map) {
  if (rows.rowBytes < kStep) return kScalarKernels.mapRowsReversed(rows, map);
  if (map.form == ByteMap::Form::Linear) {
    return WithLinear(map.linear, [&](const auto& linear) { MapRowsBackward<2>(rows, linear); });
  }
  if (map.form == ByteMap::Form::OddSymmetric) return MapRowsBackward<2>(rows, OddSymmetric(map.odd));
  MapRowsBackward<1>(rows, Table(map));
}

/// Which of 16 samples is at byte i of output register `part`, for each number of repeats.
struct RepeatMasks {
  alignas(16) uint8_t bytes[kMaxRepeat + 1][kMaxRepeat][16];
};
constexpr RepeatMasks MakeRepeatMasks() {
  RepeatMasks m{};
  for (int32_t times = 1; times <= kMaxRepeat; ++times)
    for (int32_t part = 0; part < times; ++part)
      for (int32_t i = 0; i < 16; ++i)
        m.bytes[times][part][i] = static_cast<uint8_t>((part * 16 + i) / times);
  return m;
}
constexpr RepeatMasks kRepeat = MakeRepeatMasks();

void RepeatBytes(uint8_t* out, const uint8_t* in, size_t count, int32_t times) {
  const auto& masks = kRepeat.bytes[times];
  size_t i = 0;
  for (; i + 16 <= count; i += 16) {
    const Vec128 samples = Load128(in + i);
    for (int32_t part = 0; part < times; ++part, out += 16)
      Store128(out, Shuffle128(samples, Load128(masks[part])));
  }
  kScalarKernels.repeatBytes(out, in + i, count - i, times);
}

}  // namespace
}  // namespace libnivral
