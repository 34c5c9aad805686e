// SPDX-License-Identifier: MIT
#include "colour/chroma_map.h"

#include <algorithm>
#include <cmath>

namespace libnivral {
namespace {

/// Stays below 1, and above what 128 roundings of the other factor amount to: next to a multiple of 90
/// degrees the smaller factor decides on which side of a whole number a sum lies.
int32_t ToFixed(double factor) {
  constexpr int32_t kLargest = (1 << ChromaMap::kFractionBits) - 1;
  constexpr int32_t kSmallest = 256;
  const auto size = static_cast<int32_t>(std::lround(std::ldexp(std::abs(factor), ChromaMap::kFractionBits)));
  if (size == 0) return 0;
  const int32_t bounded = std::clamp(size, kSmallest, kLargest);
  return factor < 0 ? -bounded : bounded;
}

}  // namespace

void ChromaMap::SetRotation(double newCosine, double newSine) {
  cosine = ToFixed(newCosine);
  sine = ToFixed(newSine);
}

void ChromaMap::ChooseScale(double firstSlope, double secondSlope) {
  odd = OddSymmetricMap(firstSlope, secondSlope);
  if (firstSlope == 1 && secondSlope == 1) {
    scale = Scale::None;
  } else {
    scale = EqualsOddSymmetric() ? Scale::OddSymmetric : Scale::Table;
  }
}

bool ChromaMap::EqualsOddSymmetric() const {
  for (int32_t i = -kMaxRotated; i <= kMaxRotated; ++i)
    if (odd.ToByte(i) != scaled[i + kMaxRotated]) return false;
  return true;
}

}  // namespace libnivral
