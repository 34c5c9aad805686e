// SPDX-License-Identifier: MIT
#include "paint.h"

#include <algorithm>
#include <cmath>

namespace {

void FillRows(std::vector<uint8_t>& plane, int stride, const PixelBox& box, uint8_t value) {
  for (int row = box.top; row < box.bottom; ++row)
    std::fill_n(plane.begin() + static_cast<ptrdiff_t>(row) * stride + box.left, box.right - box.left, value);
}

}  // namespace

int SnapEven(double value) {
  return static_cast<int>(std::floor(value / 2)) * 2;
}

PixelBox ClipTo(const Picture& picture, PixelBox box) {
  return {std::clamp(box.left, 0, picture.width), std::clamp(box.top, 0, picture.height),
          std::clamp(box.right, 0, picture.width), std::clamp(box.bottom, 0, picture.height)};
}

void FillBox(Picture& picture, const PixelBox& box, const YuvColour& colour) {
  const PixelBox inside = ClipTo(picture, box);
  if (inside.left >= inside.right || inside.top >= inside.bottom) return;
  const PixelBox half{inside.left / 2, inside.top / 2, inside.right / 2, inside.bottom / 2};
  FillRows(picture.y, picture.width, inside, colour.y);
  FillRows(picture.u, picture.strideUV, half, colour.u);
  FillRows(picture.v, picture.strideUV, half, colour.v);
}

void FillEllipse(Picture& picture, double centreX, double centreY, double radiusX, double radiusY,
                 const YuvColour& colour) {
  for (int row = SnapEven(centreY - radiusY); row < centreY + radiusY; row += 2) {
    const double height = (row + 1 - centreY) / radiusY;
    if (height * height >= 1) continue;
    const double half = radiusX * std::sqrt(1 - height * height);
    FillBox(picture, {SnapEven(centreX - half), row, SnapEven(centreX + half), row + 2}, colour);
  }
}
