// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// A planar YUV 4:2:0 picture in somebody's memory: height rows of Y, height / 2 rows of U and of V. Strides
/// are in bytes and include padding. Width and height travel beside it.
struct FrameView {
  uint8_t* y = nullptr;
  int32_t strideY = 0;
  uint8_t* u = nullptr;
  int32_t strideU = 0;
  uint8_t* v = nullptr;
  int32_t strideV = 0;
};

enum class MirrorMode : uint32_t { None = 0, Horizontal = 1, HalfTurn = 2 };

/// Largest magnitudes that colour settings may have; a value beyond its limit switches the adjustment off.
constexpr int32_t kMaxBrightness = 127;
constexpr int32_t kMaxContrast = 100;
constexpr int32_t kMaxSaturation = 100;
constexpr int32_t kMaxHue = 180;

/// Picture settings as the client gives them.
struct ColorValues {
  int32_t brightness = 0;
  int32_t contrast = 0;
  int32_t saturation = 0;
  int32_t hue = 0;

  bool operator==(const ColorValues&) const = default;
};
