// SPDX-License-Identifier: MIT
#pragma once

#include <array>

#include "backends/yuvdraw/yuv_draw.h"
#include "display/class_label.h"
#include "display/records.h"
#include "picture/frame_view.h"
#include "picture/pixel_rect.h"

/// A label's area in video pixels and what is to be read there.
struct BurnInLabel {
  PixelRect area;
  char text[kClassLabelBytes];
};

struct BurnInLabels {
  std::array<BurnInLabel, 2 * kMaxBoxes> labels;
  size_t count = 0;
};

/// The labels of a record whose areas lie in the picture at least in part. Distances are written in metres
/// with a tenth.
void LayoutBurnInLabels(BurnInLabels& to, const AlgRecord& record, uint32_t width, uint32_t height);

/// Draws a driver-assistance record into a frame: box outlines and the areas of class and distance labels,
/// without their letters. Coordinates use the frame's width as the row length of luma, so rows line up only
/// when the stride is the width. Planes that do not hold the frame, or from the bottom up, are left alone.
void BurnInAlgRecord(CYuvDraw& draw, const AlgRecord& record, const FrameView& frame, uint32_t width,
                     uint32_t height);
