// SPDX-License-Identifier: MIT
// The arithmetic of the conversions and of the picture settings, one sample at a time and as directly as it
// can be written. Shares nothing with the library, so that a wrong constant there cannot hide.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <utility>

namespace reference {

/// Blue, green, red.
using Pixel = std::array<uint8_t, 3>;

inline uint8_t Clamp(int32_t value) {
  return static_cast<uint8_t>(std::clamp(value, 0, 255));
}

inline Pixel ToPixel(int32_t y, int32_t u, int32_t v) {
  const int32_t luma = (y - 16) * 9535;
  return {Clamp((luma + (u - 128) * 16531) >> 13), Clamp((luma - (u - 128) * 3203 - (v - 128) * 6660) >> 13),
          Clamp((luma + (v - 128) * 13074) >> 13)};
}

inline Pixel ToSnapshotPixel(int32_t y, int32_t u, int32_t v) {
  const int32_t luma = (y - 16) * 76309;
  return {Clamp((luma + (u - 128) * 132201) >> 16),
          Clamp((luma - (u - 128) * 25675 - (v - 128) * 53279) >> 16),
          Clamp((luma + (v - 128) * 104597) >> 16)};
}

inline uint8_t Luma(const uint8_t* bgr) {
  return static_cast<uint8_t>(((66 * bgr[2] + 129 * bgr[1] + 25 * bgr[0]) >> 8) + 16);
}

/// Of the sums over four pixels.
inline std::pair<uint8_t, uint8_t> Chroma(int32_t blue, int32_t green, int32_t red) {
  return {static_cast<uint8_t>(((112 * blue - 74 * green - 38 * red) >> 10) + 128),
          static_cast<uint8_t>(((112 * red - 94 * green - 18 * blue) >> 10) + 128)};
}

struct Settings {
  int32_t brightness, contrast, saturation, hue;
};

inline uint8_t AdjustLuma(uint8_t y, const Settings& s) {
  const double c = s.contrast / 100.0;
  const int32_t d = y - 128;
  return Clamp(static_cast<int32_t>(d + (d * c + s.brightness)) + 128);
}

inline void AdjustChroma(uint8_t& uByte, uint8_t& vByte, const Settings& s) {
  const double c = s.contrast / 100.0;
  const double saturation = s.saturation / 100.0;
  const double angle = s.hue * 3.1415926 / 180.0;
  int32_t u = uByte - 128;
  int32_t v = vByte - 128;
  u = static_cast<int32_t>(u * std::cos(angle) + v * std::sin(angle));
  v = static_cast<int32_t>(v * std::cos(angle) + u * std::sin(angle));
  if (saturation != 0) {
    u = static_cast<int32_t>(u + u * saturation);
    v = static_cast<int32_t>(v + v * saturation);
  }
  if (c != 0) {
    u = static_cast<int32_t>(u + u * c);
    v = static_cast<int32_t>(v + v * c);
  }
  uByte = Clamp(u + 128);
  vByte = Clamp(v + 128);
}

}  // namespace reference
