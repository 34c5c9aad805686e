// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "backends/d3d9/yv12_surface.h"
#include "backends/d3d9/zoom.h"
#include "picture/frame_view.h"
#include "picture/pixel_rect.h"

/// Source samples on a side of a mosaic block; on the surface a block is this times the zoom factor.
constexpr int32_t kMosaicBlock = 16;

/// Replaces the luma of `area`, which lies on the surface, by one sample per block. Samples come from the
/// frame, not from the surface; chroma stays. Mirrored pictures count blocks from the window's far edges.
void PixelateLuma(const Yv12Surface& surface, const ConstFrameView& frame, const PixelRect& area,
                  const ZoomState& zoom, uint32_t mirrorMode);
