// SPDX-License-Identifier: MIT
#include "backends/d3d9/surface_copy.h"

#include <algorithm>
#include <cstring>

namespace libnivral {
namespace {

const uint8_t* RowOf(const uint8_t* plane, int32_t stride, int64_t row) {
  return plane + row * stride;
}

/// Copies rows [first, last), in one go where both sides have them without gaps.
void CopyRows(const SurfacePlane& to, const uint8_t* from, int32_t stride, int32_t first, int32_t last) {
  if (to.width == 0) return;
  const auto width = static_cast<size_t>(to.width);
  if (stride == to.width && to.doubleStep == int64_t{2} * to.width && first < last) {
    std::memcpy(to.Row(first), RowOf(from, stride, first), width * static_cast<size_t>(last - first));
    return;
  }
  for (int32_t row = first; row < last; ++row)
    std::memcpy(to.Row(row), RowOf(from, stride, row), width);
}

void CopyPlane(const SurfacePlane& to, const uint8_t* from, int32_t stride) {
  CopyRows(to, from, stride, 0, to.height);
}

/// Writes columns [first, last) of a surface row.
void CopyColumns(uint8_t* to, const uint8_t* from, int32_t first, int32_t last) {
  if (last > first) std::memcpy(to + first, from + first, static_cast<size_t>(last - first));
}

void CopyPlaneWithArea(const SurfacePlane& to, const uint8_t* from, int32_t stride, const PixelRect& area,
                       uint32_t level) {
  const int32_t left = std::clamp(area.left, 0, to.width);
  const int32_t right = std::clamp(area.right, left, to.width);
  const int32_t first = std::clamp(area.top + 1, 0, to.height);
  const int32_t last = std::clamp(area.bottom, first, to.height);
  CopyRows(to, from, stride, 0, first);
  const uint8_t* fresh = RowOf(from, stride, std::max(first - 1, 0));
  for (int32_t row = first; row < last; ++row) {
    const uint8_t* source = RowOf(from, stride, row);
    if (static_cast<uint32_t>(row) % level == 0) fresh = source;
    CopyColumns(to.Row(row), source, 0, left);
    CopyColumns(to.Row(row), fresh, left, right);
    CopyColumns(to.Row(row), source, right, to.width);
  }
  CopyRows(to, from, stride, last, to.height);
}

}  // namespace

void CopyPlain(const Yv12Surface& surface, const ConstFrameView& frame) {
  CopyPlane(surface.Luma(), frame.y, frame.strideY);
  CopyPlane(surface.V(), frame.v, frame.strideV);
  CopyPlane(surface.U(), frame.u, frame.strideU);
}

void CopyWithMosaicArea(const Yv12Surface& surface, const ConstFrameView& frame, const MosaicArea& area) {
  const uint32_t level = std::max(area.level, 1u);
  const PixelRect& luma = area.rect;
  const PixelRect chroma{luma.left / 2, luma.top / 2, luma.right / 2, luma.bottom / 2};
  CopyPlaneWithArea(surface.Luma(), frame.y, frame.strideY, luma, level);
  CopyPlaneWithArea(surface.V(), frame.v, frame.strideV, chroma, level);
  CopyPlaneWithArea(surface.U(), frame.u, frame.strideU, chroma, level);
}

}  // namespace libnivral
