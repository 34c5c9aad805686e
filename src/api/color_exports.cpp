// SPDX-License-Identifier: MIT
// Colour parameters.
#include "api/guard.h"
#include "display/base_displayer.h"
#include "nivral/nivral.h"

namespace {

void Write(int32_t* target, int32_t value) {
  if (target) *target = value;
}

/// There are two records; a client that names another gets neither memory nor an effect.
bool IsRecord(int32_t index) {
  return index == 0 || index == 1;
}

}  // namespace

extern "C" {

uint32_t NIVRAL_CALL NIVRAL_SetColorParams(void* hDraw, int32_t brightness, int32_t contrast,
                                           int32_t saturation, int32_t hue, int32_t index) {
  return Forward<BaseDisplayer>(hDraw, [&](BaseDisplayer& d) {
    if (IsRecord(index)) d.GetColorRecord(index).Set({brightness, contrast, saturation, hue});
  });
}

uint32_t NIVRAL_CALL NIVRAL_GetColorParamsEx(void* hDraw, int32_t* brightness, int32_t* contrast,
                                             int32_t* saturation, int32_t* hue, int32_t index) {
  return Forward<BaseDisplayer>(hDraw, [&](BaseDisplayer& d) {
    if (!IsRecord(index)) return;
    const ColorValues values = d.GetColorRecord(index).Get();
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

}  // extern "C"
