// SPDX-License-Identifier: MIT
#include "colour/convert.h"

void BuildConversionTables() {
}

void Rgb24ToYv12(uint8_t*, uint8_t*, uint8_t*, const uint8_t*, int32_t, int32_t, int32_t) {
}

void Yv12ToRgb24(uint8_t*, int32_t, const uint8_t*, const uint8_t*, const uint8_t*, int32_t, int32_t, int32_t,
                 int32_t) {
}
