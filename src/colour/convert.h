// SPDX-License-Identifier: MIT
// Conversions between planar YUV 4:2:0 and packed pixels: BT.601, limited range, fixed point. Pictures are
// converted in 2 x 2 blocks; an odd last column or row stays as it is. Null pointers convert nothing. Threads
// may convert side by side.
#pragma once

#include <cstddef>
#include <cstdint>

#include "colour/kernels.h"
#include "picture/frame_view.h"

namespace libnivral {

/// Chooses the loops for this processor; called when the library is loaded, before any conversion. The
/// tables behind the conversions are constants of the program.
void ChooseKernels();

/// Source: bottom-up, rows of exactly 3 * width bytes, blue first. The chroma planes' stride is strideY / 2.
void Rgb24ToYv12(uint8_t* y, uint8_t* u, uint8_t* v, const uint8_t* rgb, int32_t width, int32_t height,
                 int32_t strideY);

/// strideRgb in pixels; a negative height reads the planes from their last row upward.
void Yv12ToRgb24(uint8_t* rgb, int32_t strideRgb, const uint8_t* y, const uint8_t* u, const uint8_t* v,
                 int32_t strideY, int32_t strideUV, int32_t width, int32_t height);

/// As Yv12ToRgb24, to words of 5 bits red, 6 bits green, 5 bits blue. Channels are truncated, not diffused.
void Yv12ToRgb565(uint8_t* rgb, int32_t strideRgb, const uint8_t* y, const uint8_t* u, const uint8_t* v,
                  int32_t strideY, int32_t strideUV, int32_t width, int32_t height);

/// As Yv12ToRgb24, to U, Y0, V, Y1 per pair of pixels. Every row is written: the last of an odd number shares
/// the chroma of the row before it.
void Yv12ToYuv422(uint8_t* packed, int32_t stridePixels, const uint8_t* y, const uint8_t* u, const uint8_t* v,
                  int32_t strideY, int32_t strideUV, int32_t width, int32_t height);

/// The same conversion to any packed format, with `pitch` in bytes as surfaces have it.
void ConvertToPixels(PixelFormat format, uint8_t* out, ptrdiff_t pitch, const ConstFrameView& planes,
                     int32_t width, int32_t height);

/// Yv12ToYuv422 with `pitch` in bytes.
void ConvertTo422(uint8_t* out, ptrdiff_t pitch, const ConstFrameView& planes, int32_t width, int32_t height);

}  // namespace libnivral
