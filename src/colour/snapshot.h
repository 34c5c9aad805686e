// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// Makes a bottom-up 24-bit picture (blue first, rows of width * 3 bytes without padding) of planes whose
/// chroma has half the width and half the height, rounded down. An odd last column or row takes the chroma
/// beside it; a picture one pixel wide or high has no chroma and becomes grey. Null pointers, widths or
/// heights below 1 write nothing.
void YuvToBottomUpBgr24(uint8_t* bgr, const uint8_t* y, int32_t strideY, const uint8_t* u, int32_t strideU,
                        const uint8_t* v, int32_t strideV, int32_t width, int32_t height);
