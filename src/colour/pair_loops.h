// SPDX-License-Identifier: MIT
// Copies of both chroma planes that turn the hue of each pair of samples, on vectors of any size. Included by
// one file per instruction set, after its vectors.
#pragma once

#include "colour/chroma_map.h"
#include "colour/frame_loops.h"

namespace libnivral {
// NOLINTNEXTLINE(google-build-namespaces): every instruction set must keep its own copy of these loops
namespace {

/// Values as they leave the rotation, in words: floored, and which of them are negative.
struct Rotated {
  explicit Rotated(Vec words) : floor(words), negative(Greater16(Zero(), words)) {}

  /// Truncated: flooring went one too far on the negative side.
  Vec Value() const { return Sub16(floor, negative); }
  Vec Size() const { return Xor(floor, negative); }

  Vec floor;
  Vec negative;
};

/// One factor for each word of a pair, in two parts of 15 bits.
class PairFactors {
 public:
  PairFactors(int32_t first, int32_t second)
      : m_high(SetPairs(first >> 15, second >> 15)), m_low(SetPairs(first & 0x7FFF, second & 0x7FFF)) {}

  /// first * its factor + second * its factor, floored, as words; the words hold 1 << kScale for each unit.
  template <int kScale>
  Rotated Sum(Vec first, Vec second) const {
    return Rotated(PackSigned16(ShiftRightSigned32<15 + kScale>(Dot(UnpackLow16(first, second))),
                                ShiftRightSigned32<15 + kScale>(Dot(UnpackHigh16(first, second)))));
  }

 private:
  Vec Dot(Vec pairs) const {
    return Add32(MulAdd16(pairs, m_high), ShiftRightSigned32<15>(MulAdd16(pairs, m_low)));
  }

  Vec m_high;
  Vec m_low;
};

struct NoScale {
  explicit NoScale(const ChromaMap&) {}
  Vec operator()(const Rotated& low, const Rotated& high) const {
    return Xor(PackSigned8(low.Value(), high.Value()), Set8(0x80));
  }
};

struct OddSymmetricScale {
  explicit OddSymmetricScale(const ChromaMap& map) : m_odd(map.odd) {}
  Vec operator()(const Rotated& low, const Rotated& high) const {
    return Xor(PackSigned8(m_odd.Words(low.Size(), low.floor), m_odd.Words(high.Size(), high.floor)),
               Set8(0x80));
  }

 private:
  OddSymmetric m_odd;
};

struct TableScale {
  explicit TableScale(const ChromaMap& map) : m_scaled(map.scaled) {}
  Vec operator()(const Rotated& low, const Rotated& high) const {
    return PackUnsigned8(LookUp(low.Value()), LookUp(high.Value()));
  }

 private:
  Vec LookUp(Vec values) const { return LookUp16(Add16(values, Set16(ChromaMap::kMaxRotated)), m_scaled); }
  const uint16_t* m_scaled;
};

/// New u and v of one vector of samples each.
template <class Scale>
class PairMapper {
 public:
  explicit PairMapper(const ChromaMap& map)
      : m_forU(map.cosine, map.sine), m_forV(map.sine, map.cosine), m_scale(map) {}

  void operator()(Vec& u, Vec& v) const {
    u = Xor(u, Set8(0x80));
    v = Xor(v, Set8(0x80));
    const Vec lowV = UnpackLow8(Zero(), v);
    const Vec highV = UnpackHigh8(Zero(), v);
    const Rotated lowU = m_forU.template Sum<8>(UnpackLow8(Zero(), u), lowV);
    const Rotated highU = m_forU.template Sum<8>(UnpackHigh8(Zero(), u), highV);
    u = m_scale(lowU, highU);
    v = m_scale(m_forV.template Sum<0>(lowU.Value(), ShiftRightSigned16<8>(lowV)),
                m_forV.template Sum<0>(highU.Value(), ShiftRightSigned16<8>(highV)));
  }

 private:
  PairFactors m_forU;
  PairFactors m_forV;
  Scale m_scale;
};

template <class Scale>
void MapPairsForward(const PlanePair& p, size_t count, const ChromaMap& map) {
  const PairMapper<Scale> mapper(map);
  ForEachVector<1>(count, [&](size_t at) {
    Vec u = Load(p.inU + at);
    Vec v = Load(p.inV + at);
    mapper(u, v);
    Store(p.outU + at, u);
    Store(p.outV + at, v);
  });
}

template <class Scale>
void MapPairRowsBackward(const PlanePair& p, size_t rowBytes, size_t rows, const ChromaMap& map) {
  const PairMapper<Scale> mapper(map);
  for (size_t row = 0; row < rowBytes * rows; row += rowBytes) {
    const size_t end = row + rowBytes - kStep;
    ForEachVector<1>(rowBytes, [&](size_t at) {
      Vec u = LoadReversed(p.inU + row + at);
      Vec v = LoadReversed(p.inV + row + at);
      mapper(u, v);
      Store(p.outU + end - at, u);
      Store(p.outV + end - at, v);
    });
  }
}

void MapPairs(const PlanePair& p, size_t count, const ChromaMap& map) {
  if (count < kStep) return kScalarKernels.mapPairs(p, count, map);
  if (map.scale == ChromaMap::Scale::None) return MapPairsForward<NoScale>(p, count, map);
  if (map.scale == ChromaMap::Scale::OddSymmetric) return MapPairsForward<OddSymmetricScale>(p, count, map);
  MapPairsForward<TableScale>(p, count, map);
}

void MapPairRowsReversed(const PlanePair& p, size_t rowBytes, size_t rows, const ChromaMap& map) {
  if (rowBytes < kStep) return kScalarKernels.mapPairRowsReversed(p, rowBytes, rows, map);
  if (map.scale == ChromaMap::Scale::None) return MapPairRowsBackward<NoScale>(p, rowBytes, rows, map);
  if (map.scale == ChromaMap::Scale::OddSymmetric)
    return MapPairRowsBackward<OddSymmetricScale>(p, rowBytes, rows, map);
  MapPairRowsBackward<TableScale>(p, rowBytes, rows, map);
}

}  // namespace
}  // namespace libnivral
