// SPDX-License-Identifier: MIT
// Copies of planes that map and mirror on vectors, for any vector type. Included by one file per instruction
// set.
#pragma once

#include "colour/byte_map.h"
#include "colour/kernels.h"

namespace {

constexpr size_t kStep = kVecBytes;

struct ByteOrder {
  alignas(16) uint8_t bytes[16];
};
constexpr ByteOrder kBackward = {{15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0}};

inline Vec ReverseBytes(Vec a) {
  return ReverseLanes(Shuffle8(a, LoadLane(kBackward.bytes)));
}

struct Identity {
  Vec operator()(Vec a) const { return a; }
};

/// LinearMap on words; no table is read.
struct Linear {
  explicit Linear(const ByteMap& map)
      : m_fill(Set8(map.linear.fill)),
        m_factor(Set16(map.linear.factor)),
        m_addAbove(Set16(map.linear.addAbove)),
        m_subAbove(Set16(map.linear.subAbove)),
        m_addBelow(Set16(map.linear.addBelow)),
        m_subBelow(Set16(map.linear.subBelow)) {}

  Vec Words(Vec wide) const {
    const Vec p = MulHighUnsigned(wide, m_factor);
    const Vec above = ShiftRight16<7>(SubUnsigned16(AddUnsigned16(p, m_addAbove), m_subAbove));
    const Vec below = ShiftRight16<7>(SubUnsigned16(AddUnsigned16(p, m_addBelow), m_subBelow));
    return Max16(above, Min16(below, Set16(128)));
  }
  Vec operator()(Vec a) const {
    return PackUnsigned8(Words(UnpackLow8(m_fill, a)), Words(UnpackHigh8(m_fill, a)));
  }

 private:
  Vec m_fill;
  Vec m_factor;
  Vec m_addAbove;
  Vec m_subAbove;
  Vec m_addBelow;
  Vec m_subBelow;
};

/// The table in sixteen shuffles. A shuffle gives zero where the index is negative, so counting the index
/// down by 16 leaves sixteenth k in force for every byte from 16 * k on; with each sixteenth stored as its
/// difference to the one before, the exclusive-or of all that are in force is the table's value.
struct Table {
  explicit Table(const ByteMap& map) {
    for (int32_t half = 0; half < 256; half += 128)
      for (int32_t i = 0; i < 128; ++i)
        m_steps[half + i] =
            static_cast<uint8_t>(map.table[half + i] ^ (i < 16 ? 0 : map.table[half + i - 16]));
  }

  Vec Half(Vec index, const uint8_t* steps) const {
    Vec sum = Shuffle8(LoadLane(steps), index);
    for (int32_t k = 1; k < 8; ++k) {
      index = SubSigned8(index, Set8(16));
      sum = Xor(sum, Shuffle8(LoadLane(steps + k * 16), index));
    }
    return sum;
  }
  Vec operator()(Vec a) const { return Xor(Half(a, m_steps), Half(Xor(a, Set8(0x80)), m_steps + 128)); }

 private:
  alignas(64) uint8_t m_steps[256];
};

/// As ForEachBlock, in steps of whole vectors over any number of bytes that is at least one vector.
template <class Block>
inline void ForEachVector(size_t count, Block block) {
  const size_t last = count - kStep;
  for (size_t at = 0;;) {
    block(at);
    if (at == last) return;
    at = at + kStep < last ? at + kStep : last;
  }
}

template <class Map>
inline void MapForward(uint8_t* out, const uint8_t* in, size_t count, const Map& map) {
  ForEachVector(count, [&](size_t at) { Store(out + at, map(Load(in + at))); });
}

template <class Map>
inline void MapBackward(uint8_t* out, const uint8_t* in, size_t count, const Map& map) {
  const uint8_t* const end = in + count - kStep;
  ForEachVector(count, [&](size_t at) { Store(out + at, ReverseBytes(map(Load(end - at)))); });
}

void MapBytes(uint8_t* out, const uint8_t* in, size_t count, const ByteMap& map) {
  if (count < kStep) return kScalarKernels.mapBytes(out, in, count, map);
  if (map.isLinear) return MapForward(out, in, count, Linear(map));
  MapForward(out, in, count, Table(map));
}

void MapBytesReversed(uint8_t* out, const uint8_t* in, size_t count, const ByteMap& map) {
  if (count < kStep) return kScalarKernels.mapBytesReversed(out, in, count, map);
  if (map.isLinear) return MapBackward(out, in, count, Linear(map));
  MapBackward(out, in, count, Table(map));
}

void CopyReversed(uint8_t* out, const uint8_t* in, size_t count) {
  if (count < kStep) return kScalarKernels.copyReversed(out, in, count);
  MapBackward(out, in, count, Identity());
}

/// Words looked up one by one: gathering them with the processor's own instruction is no faster.
inline Vec LookUp(Vec indices, const uint16_t* pairs) {
  alignas(kVecBytes) uint16_t words[kStep / 2];
  Store(words, indices);
  for (uint16_t& word : words)
    word = pairs[word];
  return Load(words);
}

/// New u and v of one vector of samples each.
struct MappedPair {
  MappedPair(Vec u, Vec v, const uint16_t* pairs) {
    const Vec low = LookUp(UnpackLow8(v, u), pairs);
    const Vec high = LookUp(UnpackHigh8(v, u), pairs);
    const Vec byte = Set16(0xFF);
    newU = PackUnsigned8(And(low, byte), And(high, byte));
    newV = PackUnsigned8(ShiftRight16<8>(low), ShiftRight16<8>(high));
  }
  Vec newU;
  Vec newV;
};

void MapPairs(const PlanePair& p, size_t count, const uint16_t* pairs) {
  if (count < kStep) return kScalarKernels.mapPairs(p, count, pairs);
  ForEachVector(count, [&](size_t at) {
    const MappedPair mapped(Load(p.inU + at), Load(p.inV + at), pairs);
    Store(p.outU + at, mapped.newU);
    Store(p.outV + at, mapped.newV);
  });
}

void MapPairsReversed(const PlanePair& p, size_t count, const uint16_t* pairs) {
  if (count < kStep) return kScalarKernels.mapPairsReversed(p, count, pairs);
  const size_t end = count - kStep;
  ForEachVector(count, [&](size_t at) {
    const MappedPair mapped(Load(p.inU + end - at), Load(p.inV + end - at), pairs);
    Store(p.outU + at, ReverseBytes(mapped.newU));
    Store(p.outV + at, ReverseBytes(mapped.newV));
  });
}

}  // namespace
