// SPDX-License-Identifier: MIT
// 24-bit pixels to planes on vectors of any size. Included by one file per instruction set, after its
// vectors.
#pragma once

#include "colour/vector_extras.h"
#include "colour/yuv_loops.h"

namespace libnivral {
// NOLINTNEXTLINE(google-build-namespaces): every instruction set must keep its own copy of these loops
namespace {

// Luma is a sum of products of unsigned bytes with factors that do not fit signed bytes: the 129 of green is
// split over its two neighbours, 25 blue + 100 green and 66 red + 29 green.
//
// Chroma, with p and q the sums of blue - green and of red - green over a block's four pixels, is
//   u = (112 blue - 74 green - 38 red) >> 10 = (56 p - 19 q) >> 9
//   v = (112 red - 94 green - 18 blue) >> 10 = (56 q - 9 p) >> 9

constexpr int32_t kGroupPixels = 4;
constexpr int32_t kGroupBytes = kGroupPixels * 3;

/// Of four pixels at byte kStart: blue and green interleaved, then red and green.
struct GroupMask {
  alignas(16) uint8_t bytes[16];
};
constexpr GroupMask MakeGroupMask(int32_t start) {
  GroupMask m{};
  for (int32_t i = 0; i < 8; ++i) {
    const int32_t pixel = start + i / 2 * 3;
    m.bytes[i] = static_cast<uint8_t>(pixel + i % 2);
    m.bytes[8 + i] = static_cast<uint8_t>(pixel + (i % 2 ? 1 : 2));
  }
  return m;
}
constexpr GroupMask kGroup = MakeGroupMask(0);
constexpr GroupMask kLastGroup = MakeGroupMask(4);

/// Words that alternate between two factors, as bytes or as words.
inline Vec BytePairs(int32_t first, int32_t second) {
  return Set16((first & 0xFF) | (second & 0xFF) << 8);
}

/// Half of a block in one row: luma not yet shifted, and the differences that chroma is made of.
struct HalfRow {
  Vec luma;
  Vec blue;
  Vec red;
};

inline HalfRow Split(Vec firstGroup, Vec secondGroup) {
  const Vec blueGreen = UnpackLow64(firstGroup, secondGroup);
  const Vec redGreen = UnpackHigh64(firstGroup, secondGroup);
  return {Add16(MulAdd8(blueGreen, BytePairs(25, 100)), MulAdd8(redGreen, BytePairs(66, 29))),
          MulAdd8(blueGreen, BytePairs(1, -1)), MulAdd8(redGreen, BytePairs(1, -1))};
}

struct BlockRow {
  HalfRow low;
  HalfRow high;
};

/// Each lane holds 16 pixels. The last group is loaded 4 bytes early, so that nothing behind the pixels is
/// read.
inline BlockRow LoadRow(const uint8_t* bgr) {
  constexpr ptrdiff_t kLaneBytes = 48;
  const Vec mask = LoadLane(kGroup.bytes);
  const auto group = [&](int32_t index) {
    return Shuffle8(LoadLanes(bgr + index * kGroupBytes, kLaneBytes), mask);
  };
  const Vec last = Shuffle8(LoadLanes(bgr + 3 * kGroupBytes - 4, kLaneBytes), LoadLane(kLastGroup.bytes));
  return {Split(group(0), group(1)), Split(group(2), last)};
}

inline void StoreLuma(uint8_t* y, const BlockRow& row) {
  Store(y, Add8(PackUnsigned8(ShiftRight16<8>(row.low.luma), ShiftRight16<8>(row.high.luma)), Set8(16)));
}

/// Adjacent pixels are summed by the multiplication.
inline Vec Weigh(Vec first, int32_t firstFactor, Vec second, int32_t secondFactor) {
  return ShiftRightSigned32<9>(
      Add32(MulAdd16(first, Set16(firstFactor)), MulAdd16(second, Set16(secondFactor))));
}

void BgrToYuv(const RgbRows& twoRows, int32_t width) {
  const int32_t even = width & ~1;
  if (even < kVecBytes) return kScalarKernels.bgrToYuv(twoRows, width);
  const RgbRows rows = twoRows;  // a copy, which no store can change
  const ptrdiff_t pitch = rows.bgr[1] - rows.bgr[0];
  const bool isLarge = width > kCachedWidth;
  ForEachBlock(even, kVecBytes, [&](int32_t x) {
    if (isLarge) {
      Prefetch<kVecBytes * 3>(rows.bgr[0], 2 * pitch + ptrdiff_t{x} * 3);
      Prefetch<kVecBytes * 3>(rows.bgr[1], 2 * pitch + ptrdiff_t{x} * 3);
    }
    const BlockRow upper = LoadRow(rows.bgr[0] + ptrdiff_t{x} * 3);
    const BlockRow lower = LoadRow(rows.bgr[1] + ptrdiff_t{x} * 3);
    StoreLuma(rows.y[0] + x, upper);
    StoreLuma(rows.y[1] + x, lower);
    const Vec blueLow = Add16(upper.low.blue, lower.low.blue);
    const Vec blueHigh = Add16(upper.high.blue, lower.high.blue);
    const Vec redLow = Add16(upper.low.red, lower.low.red);
    const Vec redHigh = Add16(upper.high.red, lower.high.red);
    const Vec u = PackSigned16(Weigh(blueLow, 56, redLow, -19), Weigh(blueHigh, 56, redHigh, -19));
    const Vec v = PackSigned16(Weigh(redLow, 56, blueLow, -9), Weigh(redHigh, 56, blueHigh, -9));
    StoreHalves(rows.u + x / 2, rows.v + x / 2, Xor(PackSigned8(u, v), Set8(0x80)));
  });
}

}  // namespace
}  // namespace libnivral
