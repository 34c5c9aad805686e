// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "picture/frame_view.h"

namespace libnivral {

/// Makes a bottom-up 24-bit picture (blue first, rows of width * 3 bytes without padding) of planes whose
/// chroma has half the width and half the height, rounded down. An odd last column or row takes the chroma
/// beside it; a picture one pixel wide or high has no chroma and becomes grey. Without a plane that has
/// samples nothing is written, nor for widths or heights below 1.
void YuvToBottomUpBgr24(uint8_t* bgr, const ConstFrameView& frame, int32_t width, int32_t height);

}  // namespace libnivral
