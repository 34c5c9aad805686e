// SPDX-License-Identifier: MIT
// Colour-space conversions, stateless.
#include "api/guard.h"
#include "colour/convert.h"
#include "nivral/nivral.h"

extern "C" {

uint32_t NIVRAL_CALL NIVRAL_rgb24_to_yv12_c(uint8_t* pY, uint8_t* pU, uint8_t* pV, const uint8_t* rgb,
                                            uint32_t width, uint32_t height, uint32_t strideY) {
  Rgb24ToYv12(pY, pU, pV, rgb, static_cast<int32_t>(width), static_cast<int32_t>(height),
              static_cast<int32_t>(strideY));
  return kApiOk;
}

uint32_t NIVRAL_CALL NIVRAL_yv12_to_rgb24_c(uint8_t* rgb, uint32_t rgbStride, const uint8_t* pY,
                                            const uint8_t* pU, const uint8_t* pV, uint32_t strideY,
                                            uint32_t strideUV, uint32_t width, uint32_t height) {
  Yv12ToRgb24(rgb, static_cast<int32_t>(rgbStride), pY, pU, pV, static_cast<int32_t>(strideY),
              static_cast<int32_t>(strideUV), static_cast<int32_t>(width), static_cast<int32_t>(height));
  return kApiOk;
}

}  // extern "C"
