// SPDX-License-Identifier: MIT
#include "display/burn_in.h"

namespace libnivral {
namespace {

bool Holds(const FrameView& frame, uint32_t width, uint32_t height) {
  const bool drawable = width <= UINT16_MAX && height <= UINT16_MAX && !ConstFrameView(frame).IsBottomUp();
  return drawable && HoldsFrame(frame, width, height);
}

/// Ends outside are not clamped but pulled in or wrapped by the drawer: what has nothing in the picture would
/// run through its rows. Right and bottom edges of the picture belong to it, they are drawn just inside.
bool IsOutside(const WideRect& r, uint32_t width, uint32_t height) {
  return r.right < 0 || r.bottom < 0 || r.left > width || r.top > height;
}

}  // namespace

void BurnIn(CYuvDraw& draw, const OverlayList& list, const FrameView& f, uint32_t width, uint32_t height) {
  if (!Holds(f, width, height)) return;
  for (const OverlayShape& shape : list.shapes) {
    const WideRect& r = shape.corners;
    if (IsOutside(r, width, height)) continue;
    const uint32_t topLeft = PackPoint(r.left, r.top);
    if (shape.kind == OverlayShape::Kind::Outline) {
      draw.DrawRect(0, width, height, f.y, f.strideY, f.u, f.v, 0, topLeft, PackPoint(r.right, r.bottom));
    } else if (shape.kind == OverlayShape::Kind::Fill) {
      // The right column is part of what is filled, the bottom row is not.
      draw.FillRect(0, width, height, f.y, f.strideY, f.u, f.v, 0, topLeft, PackPoint(r.right - 1, r.bottom));
    }
  }
}

}  // namespace libnivral
