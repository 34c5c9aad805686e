// SPDX-License-Identifier: MIT
#include "backends/d3d9/surface_copy.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace {

const uint8_t* RowOf(const uint8_t* plane, int32_t stride, int64_t row) {
  return plane + row * stride;
}

void CopyPlane(const SurfacePlane& to, const uint8_t* from, int32_t stride) {
  const auto width = static_cast<size_t>(to.width);
  if (stride == to.width && to.doubleStep == int64_t{2} * to.width) {
    std::memcpy(to.first, from, width * static_cast<size_t>(to.height));
    return;
  }
  for (int32_t row = 0; row < to.height; ++row)
    std::memcpy(to.Row(row), RowOf(from, stride, row), width);
}

/// Writes columns [first, last) of a surface row.
void CopyColumns(uint8_t* to, const uint8_t* from, int32_t first, int32_t last) {
  if (last > first) std::memcpy(to + first, from + first, static_cast<size_t>(last - first));
}

void CopyPlaneWithArea(const SurfacePlane& to, const uint8_t* from, int32_t stride, const PixelRect& area,
                       uint32_t level) {
  const int32_t left = std::clamp(area.left, 0, to.width);
  const int32_t right = std::clamp(area.right, left, to.width);
  const uint8_t* fresh = from;
  for (int32_t row = 0; row < to.height; ++row) {
    const uint8_t* source = RowOf(from, stride, row);
    const bool inside = row > area.top && row < area.bottom;
    if (!inside || static_cast<uint32_t>(row) % level == 0) fresh = source;
    if (fresh == source) {
      CopyColumns(to.Row(row), source, 0, to.width);
    } else {
      CopyColumns(to.Row(row), source, 0, left);
      CopyColumns(to.Row(row), fresh, left, right);
      CopyColumns(to.Row(row), source, right, to.width);
    }
  }
}

bool HoldsPlane(const uint8_t* plane, int32_t stride, int32_t width, int32_t height) {
  if (width == 0 || height == 0) return true;
  return plane && (stride == 0 || std::abs(int64_t{stride}) >= width);
}

}  // namespace

bool HoldsFrame(const FrameView& f, int32_t width, int32_t height) {
  return HoldsPlane(f.y, f.strideY, width, height) && HoldsPlane(f.u, f.strideU, width / 2, height / 2) &&
         HoldsPlane(f.v, f.strideV, width / 2, height / 2);
}

void CopyPlain(const Yv12Surface& surface, const FrameView& frame) {
  CopyPlane(surface.Luma(), frame.y, frame.strideY);
  CopyPlane(surface.V(), frame.v, frame.strideV);
  CopyPlane(surface.U(), frame.u, frame.strideU);
}

void CopyWithMosaicArea(const Yv12Surface& surface, const FrameView& frame, const MosaicArea& area) {
  const uint32_t level = std::max(area.level, 1u);
  const PixelRect& luma = area.rect;
  const PixelRect chroma{luma.left / 2, luma.top / 2, luma.right / 2, luma.bottom / 2};
  CopyPlaneWithArea(surface.Luma(), frame.y, frame.strideY, luma, level);
  CopyPlaneWithArea(surface.V(), frame.v, frame.strideV, chroma, level);
  CopyPlaneWithArea(surface.U(), frame.u, frame.strideU, chroma, level);
}
