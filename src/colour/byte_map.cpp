// SPDX-License-Identifier: MIT
#include "colour/byte_map.h"

#include <algorithm>
#include <cmath>

namespace libnivral {
namespace {

constexpr int32_t kOne = 1 << 7;
constexpr int32_t kMiddle = 128;

/// Offsets that put p into place, as an interval that shrinks while bytes are looked at.
struct Offset {
  int32_t low = -0xFFFF;
  int32_t high = 0xFFFF;

  bool IsEmpty() const { return low > high; }
  void AtMost(int32_t limit) { high = std::min(high, limit); }
  void AtLeast(int32_t limit) { low = std::max(low, limit); }
};

uint16_t Positive(int32_t value) {
  return static_cast<uint16_t>(std::max(value, 0));
}

int32_t Product(const LinearMap& m, int32_t byte) {
  return ((byte << 8 | m.fill) * int64_t{m.factor}) >> 16;
}

/// Both halves of the function round toward the middle: the one above it down, the one below it up. At the
/// ends the offset may be anything that saturates.
bool Fit(LinearMap& m, const uint8_t (&table)[256]) {
  Offset above;
  Offset below;
  for (int32_t byte = 0; byte < 256; ++byte) {
    const int32_t want = table[byte];
    const int32_t p = Product(m, byte);
    Offset& side = want >= kMiddle ? above : below;
    if (want == kMiddle) {
      above.AtMost((kMiddle + 1) * kOne - 1 - p);
      below.AtLeast(kMiddle * kOne - p);
      continue;
    }
    if (want != 0) side.AtLeast(want * kOne - p);
    if (want != 255) side.AtMost((want + 1) * kOne - 1 - p);
  }
  if (above.IsEmpty() || below.IsEmpty()) return false;
  const int32_t up = std::clamp(0, above.low, above.high);
  const int32_t down = std::clamp(0, below.low, below.high);
  m.addAbove = Positive(up);
  m.subAbove = Positive(-up);
  m.addBelow = Positive(down);
  m.subBelow = Positive(-down);
  return true;
}

uint8_t Apply(const LinearMap& m, int32_t byte) {
  const auto shifted = [&](int32_t add, int32_t sub) {
    return std::max(std::min(Product(m, byte) + add, 0xFFFF) - sub, 0) / kOne;
  };
  const int32_t above = shifted(m.addAbove, m.subAbove);
  const int32_t below = shifted(m.addBelow, m.subBelow);
  return static_cast<uint8_t>(std::min(std::max(above, std::min(below, kMiddle)), 255));
}

/// floor(|distance| * slope): a factor that is never below the slope, and above it by less than a hundredth
/// in 320 steps. A slope of 2 does not fit and is tried as the next smaller factor.
uint16_t OddSymmetricFactor(double slope) {
  return static_cast<uint16_t>(std::min(std::ceil(slope * 0x8000), 65535.0));
}

uint8_t Apply(const OddSymmetricMap& m, int32_t byte) {
  return m.ToByte(byte - kMiddle);
}

template <class Map>
bool Equals(const Map& map, const uint8_t (&table)[256]) {
  for (int32_t byte = 0; byte < 256; ++byte)
    if (Apply(map, byte) != table[byte]) return false;
  return true;
}

}  // namespace

OddSymmetricMap::OddSymmetricMap(double firstSlope, double secondSlope)
    : factors{OddSymmetricFactor(firstSlope), OddSymmetricFactor(secondSlope)} {
}

uint8_t OddSymmetricMap::ToByte(int32_t distance) const {
  int32_t size = std::abs(distance);
  for (const uint16_t factor : factors)
    size = (size * 2 * factor) >> 16;
  return static_cast<uint8_t>(std::clamp(kMiddle + (distance < 0 ? -size : size), 0, 255));
}

void ByteMap::FindTableForm() {
  bool same = true;
  for (int32_t i = 0; i < 256; ++i) {
    same = same && table[i] == i;
    steps[i] = static_cast<uint8_t>(table[i] ^ (i % 128 < 16 ? 0 : table[i - 16]));
  }
  form = same ? Form::Identity : Form::Table;
}

void ByteMap::TryLinear(double slope) {
  const auto nearest = static_cast<int32_t>(std::lround(slope * 0x8000));
  for (const int32_t step : {0, 1, -1, 2, -2}) {
    for (int32_t fill = 0; fill <= 255 && form == Form::Table; fill += 51) {
      linear.factor = static_cast<uint16_t>(std::clamp(nearest + step, 0, 0xFFFF));
      linear.fill = static_cast<uint16_t>(fill);
      if (Fit(linear, table) && Equals(linear, table)) form = Form::Linear;
    }
  }
}

void ByteMap::TryOddSymmetric(double firstSlope, double secondSlope) {
  odd = OddSymmetricMap(firstSlope, secondSlope);
  if (form == Form::Table && Equals(odd, table)) form = Form::OddSymmetric;
}

}  // namespace libnivral
