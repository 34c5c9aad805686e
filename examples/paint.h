// SPDX-License-Identifier: MIT
#pragma once

#include "picture.h"

/// A colour in BT.601, limited range.
struct YuvColour {
  uint8_t y;
  uint8_t u;
  uint8_t v;
};

/// Right and bottom are the first column and row outside.
struct PixelBox {
  int left;
  int top;
  int right;
  int bottom;
};

/// The even number at or below `value`: edges on even pixels cut no chroma sample in two.
int SnapEven(double value);

PixelBox ClipTo(const Picture& picture, PixelBox box);

/// Fills the part of an even-edged box that lies inside the picture.
void FillBox(Picture& picture, const PixelBox& box, const YuvColour& colour);

/// Fills an ellipse with row-wise boxes two pixels high.
void FillEllipse(Picture& picture, double centreX, double centreY, double radiusX, double radiusY,
                 const YuvColour& colour);
