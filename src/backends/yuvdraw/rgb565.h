// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "picture/frame_view.h"

/// Bottom-up rows of width 16-bit pixels: red in 0xF800, green in 0x07E0, blue in 0x001F. Luma is taken as
/// full range. For even widths and heights; an odd last column or row is left alone.
void YuvToBottomUpRgb565(uint16_t* rgb, const FrameView& frame, uint32_t width, uint32_t height);
