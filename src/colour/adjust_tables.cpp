// SPDX-License-Identifier: MIT
#include "colour/adjust_tables.h"

#include <algorithm>
#include <cmath>

namespace libnivral {
namespace {

/// Part of the picture settings' definition; not the nearest double to pi.
constexpr double kPi = 3.1415926;
constexpr int32_t kNeutral = 128;

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

}  // namespace

bool IsAdjustActive(const ColourValues& values) {
  if (values == ColourValues{}) return false;
  return InRange(values.hue, kMaxHue) && InRange(values.contrast, kMaxContrast) &&
         InRange(values.saturation, kMaxSaturation) && InRange(values.brightness, kMaxBrightness);
}

void AdjustTables::Update(const ColourValues& values) {
  if (values == m_built) return;
  m_built = values;
  const double contrast = values.contrast / 100.0;
  const double saturation = values.saturation / 100.0;
  m_luma.Fill([&](int32_t y) {
    const int32_t d = y - kNeutral;
    return ToByte(Trunc(d + (d * contrast + values.brightness)));
  });
  m_luma.TryOddSymmetric(1 + contrast, 1);
  m_luma.TryLinear(1 + contrast);
  const auto scale = [&](int32_t value) { return ScaleChroma(value, saturation, contrast); };
  if (values.hue == 0) {
    m_chroma.Fill([&](int32_t u) { return scale(u - kNeutral); });
    m_chroma.TryOddSymmetric(1 + saturation, 1 + contrast);
  } else {
    const double angle = values.hue * kPi / 180.0;
    m_pairs.SetRotation(std::cos(angle), std::sin(angle));
    m_pairs.FillScale(scale, 1 + saturation, 1 + contrast);
  }
}

}  // namespace libnivral
