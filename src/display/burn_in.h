// SPDX-License-Identifier: MIT
#pragma once

#include "backends/yuvdraw/yuv_draw.h"
#include "display/frame_view.h"
#include "display/records.h"

/// Draws a driver-assistance record into a frame: box outlines and the areas of class and distance labels,
/// without their letters. Coordinates use the frame's width as the row length of luma, so rows line up only
/// when the stride is the width. A frame with a stride shorter than its row is left alone.
void BurnInAlgRecord(CYuvDraw& draw, const AlgRecord& record, const FrameView& frame, uint32_t width,
                     uint32_t height);
