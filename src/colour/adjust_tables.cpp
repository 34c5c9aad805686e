// SPDX-License-Identifier: MIT
#include "colour/adjust_tables.h"

#include <algorithm>
#include <cmath>
#include <new>

namespace {

/// Part of the picture settings' definition; not the nearest double to pi.
constexpr double kPi = 3.1415926;
constexpr int32_t kNeutral = 128;
/// No chroma value leaves the hue step beyond this: |u'| <= 128 * sqrt(2), |v'| <= 128 + |u'|.
constexpr int32_t kMaxRotated = 320;

bool InRange(int32_t value, int32_t limit) {
  return value >= -limit && value <= limit;
}

int32_t Trunc(double value) {
  return static_cast<int32_t>(value);
}

uint8_t ToByte(int32_t centred) {
  return static_cast<uint8_t>(std::clamp(centred + kNeutral, 0, 255));
}

/// Saturation and contrast of a chroma value that the hue step has left, each truncated on its own.
uint8_t ScaleChroma(int32_t value, double saturation, double contrast) {
  if (saturation != 0) value = Trunc(value + value * saturation);
  if (contrast != 0) value = Trunc(value + value * contrast);
  return ToByte(value);
}

struct Rotation {
  explicit Rotation(int32_t hue) : cosine(std::cos(hue * kPi / 180.0)), sine(std::sin(hue * kPi / 180.0)) {}
  double cosine;
  double sine;
};

}  // namespace

bool IsAdjustActive(const ColorValues& values) {
  if (values == ColorValues{}) return false;
  return InRange(values.hue, kMaxHue) && InRange(values.contrast, kMaxContrast) &&
         InRange(values.saturation, kMaxSaturation) && InRange(values.brightness, kMaxBrightness);
}

bool AdjustTables::Update(const ColorValues& values) {
  if (values == m_built) return true;
  m_built = {};
  const double contrast = values.contrast / 100.0;
  const double saturation = values.saturation / 100.0;
  m_luma.Fill([&](int32_t y) {
    const int32_t d = y - kNeutral;
    return ToByte(Trunc(d + (d * contrast + values.brightness)));
  });
  m_luma.TryOdd(1 + contrast, 1);
  m_luma.TryLinear(1 + contrast);
  m_chroma.Fill([&](int32_t u) { return ScaleChroma(u - kNeutral, saturation, contrast); });
  m_chroma.TryOdd(1 + saturation, 1 + contrast);
  if (values.hue != 0 && !BuildPairs(values)) return false;
  m_built = values;
  return true;
}

bool AdjustTables::BuildPairs(const ColorValues& values) {
  if (!m_pairs) m_pairs.reset(new (std::nothrow) uint16_t[256 * 256 + 1]);
  if (!m_pairs) return false;
  uint8_t scaled[kMaxRotated * 2 + 1];
  for (int32_t i = -kMaxRotated; i <= kMaxRotated; ++i)
    scaled[i + kMaxRotated] = ScaleChroma(i, values.saturation / 100.0, values.contrast / 100.0);

  const Rotation r(values.hue);
  uint16_t* pair = m_pairs.get();
  for (int32_t u = -kNeutral; u < kNeutral; ++u) {
    for (int32_t v = -kNeutral; v < kNeutral; ++v) {
      // Both lines add, and the second uses the new u: the clients' pictures are tuned to this form.
      const int32_t newU = Trunc(u * r.cosine + v * r.sine);
      const int32_t newV = Trunc(v * r.cosine + newU * r.sine);
      *pair++ = static_cast<uint16_t>(scaled[newU + kMaxRotated] | scaled[newV + kMaxRotated] << 8);
    }
  }
  return true;
}
