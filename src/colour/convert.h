// SPDX-License-Identifier: MIT
// Conversions between planar YUV 4:2:0 and packed RGB: BT.601, limited range, fixed point.
#pragma once

#include <cstdint>

/// Fills the lookup tables; called once when the library is loaded, before any conversion.
void BuildConversionTables();

void Rgb24ToYv12(uint8_t* y, uint8_t* u, uint8_t* v, const uint8_t* rgb, int32_t width, int32_t height,
                 int32_t strideY);

/// strideRgb in pixels; a negative height reads the planes from their last row upward.
void Yv12ToRgb24(uint8_t* rgb, int32_t strideRgb, const uint8_t* y, const uint8_t* u, const uint8_t* v,
                 int32_t strideY, int32_t strideUV, int32_t width, int32_t height);
