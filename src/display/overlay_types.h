// SPDX-License-Identifier: MIT
// Plain forms that overlay layouts are made of.
#pragma once

#include <cstdint>

#include "picture/pixel_rect.h"
#include "util/nothrow_list.h"

namespace libnivral {

struct OverlayColour {
  uint8_t r = 0;
  uint8_t g = 0;
  uint8_t b = 0;
  bool operator==(const OverlayColour&) const = default;
};

constexpr OverlayColour kOverlayGreen{0, 255, 0};
constexpr OverlayColour kOverlayOrange{255, 97, 0};
constexpr OverlayColour kOverlayAmber{255, 197, 0};
constexpr OverlayColour kOverlayBlue{0, 0, 255};

/// From 0x00BBGGRR.
constexpr OverlayColour FromColourRef(uint32_t colour) {
  return {static_cast<uint8_t>(colour), static_cast<uint8_t>(colour >> 8),
          static_cast<uint8_t>(colour >> 16)};
}

/// How video pixels become display pixels.
struct DisplayMap {
  int32_t videoWidth = 0;
  int32_t videoHeight = 0;
  int32_t displayWidth = 0;
  int32_t displayHeight = 0;

  static constexpr DisplayMap Unscaled(int32_t width, int32_t height) {
    return {width, height, width, height};
  }

  float X(float x) const { return x * static_cast<float>(displayWidth) / static_cast<float>(videoWidth); }
  float Y(float y) const { return y * static_cast<float>(displayHeight) / static_cast<float>(videoHeight); }

  /// The same for whole pixels, rounded towards zero.
  int64_t PixelX(int64_t x) const { return Scale(x, displayWidth, videoWidth); }
  int64_t PixelY(int64_t y) const { return Scale(y, displayHeight, videoHeight); }

  static constexpr int64_t Scale(int64_t value, int64_t to, int64_t from) {
    return to == from ? value : value * to / from;
  }
};

using RectList = NothrowList<PixelRect>;

}  // namespace libnivral
