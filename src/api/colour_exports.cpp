// SPDX-License-Identifier: MIT
// Colour parameters, and the conversions, which are stateless.
#include "api/guard.h"
#include "colour/convert.h"
#include "display/base_displayer.h"
#include "nivral/nivral.h"

namespace libnivral {
namespace {

void Write(int32_t* target, int32_t value) {
  if (target) *target = value;
}

/// There are two records; a client that names another gets neither memory nor an effect.
bool IsRecord(int32_t index) {
  return index == 0 || index == 1;
}

}  // namespace
}  // namespace libnivral

using namespace libnivral;  // NOLINT(google-global-names-in-headers): no header

extern "C" {

uint32_t NIVRAL_CALL NIVRAL_SetColorParams(void* hDraw, int32_t brightness, int32_t contrast,
                                           int32_t saturation, int32_t hue, int32_t index) {
  return Forward<BaseDisplayer>(hDraw, [&](BaseDisplayer& d) {
    if (IsRecord(index)) d.GetColourRecord(index).Set({brightness, contrast, saturation, hue});
  });
}

uint32_t NIVRAL_CALL NIVRAL_GetColorParamsEx(void* hDraw, int32_t* brightness, int32_t* contrast,
                                             int32_t* saturation, int32_t* hue, int32_t index) {
  return Forward<BaseDisplayer>(hDraw, [&](BaseDisplayer& d) {
    if (!IsRecord(index)) return;
    const ColourValues values = d.GetColourRecord(index).Get();
    Write(brightness, values.brightness);
    Write(contrast, values.contrast);
    Write(saturation, values.saturation);
    Write(hue, values.hue);
  });
}

uint32_t NIVRAL_CALL NIVRAL_GetColorParams(void* hDraw, int32_t* brightness, int32_t* contrast,
                                           int32_t* saturation, int32_t* hue) {
  return NIVRAL_GetColorParamsEx(hDraw, brightness, contrast, saturation, hue, 0);
}

uint32_t NIVRAL_CALL NIVRAL_GetColorParamsRange(int32_t* brightnessMin, int32_t* brightnessMax,
                                                int32_t* contrastMin, int32_t* contrastMax,
                                                int32_t* saturationMin, int32_t* saturationMax,
                                                int32_t* hueMin, int32_t* hueMax) {
  Write(brightnessMin, -kMaxBrightness);
  Write(brightnessMax, kMaxBrightness);
  Write(contrastMin, -kMaxContrast);
  Write(contrastMax, kMaxContrast);
  Write(saturationMin, -kMaxSaturation);
  Write(saturationMax, kMaxSaturation);
  Write(hueMin, -kMaxHue);
  Write(hueMax, kMaxHue);
  return kApiOk;
}

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
