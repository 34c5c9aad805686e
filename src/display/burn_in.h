// SPDX-License-Identifier: MIT
#pragma once

#include "backends/yuvdraw/yuv_draw.h"
#include "display/overlay_list.h"
#include "picture/frame_view.h"

namespace libnivral {

/// Draws the outlines and label areas of a list, laid out in BurnInStyle, into a frame. Coordinates use the
/// frame's width as the row length of luma, so rows line up only when the stride is the width. Shapes with
/// nothing in the picture are left out. Planes that do not hold the frame, or from the bottom up, are left
/// alone.
void BurnIn(CYuvDraw& draw, const OverlayList& list, const FrameView& frame, uint32_t width, uint32_t height);

}  // namespace libnivral
