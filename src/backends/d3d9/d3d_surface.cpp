// SPDX-License-Identifier: MIT
#include "backends/d3d9/d3d_surface.h"

#include <algorithm>
#include <cstring>

#include "colour/kernels.h"

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

// The zoomed copy: a source row is enlarged once, in memory that is in the cache, and then written to each of
// the surface rows that show it.

/// Columns enlarged at a time: a row's worth at the usual sizes, and whole runs at every zoom.
constexpr int32_t kColumns = 3360;
static_assert(kColumns % (3 * 5 * 7 * kMaxZoom) == 0);
static_assert(kMaxZoom <= kMaxRepeat);

using Chunk = uint8_t[kColumns];

struct ZoomedSource {
  const uint8_t* plane;
  int32_t stride;
  int32_t left;  ///< of the zoom window, in samples of this plane
  int32_t top;
};

/// Fills `width` enlarged columns from column `first` of the surface on.
void EnlargeColumns(Chunk& chunk, RepeatBytesKernel repeat, const SurfacePlane& to,
                    const ZoomedSource& source, const uint8_t* row, int32_t first, int32_t width,
                    int32_t factor) {
  const int32_t column = source.left + first / factor;
  const int32_t wanted = (width + factor - 1) / factor;
  const int32_t present = std::clamp(to.width - column, 0, wanted);
  const int32_t whole = std::min(present, width / factor);
  repeat(chunk, row + column, static_cast<size_t>(whole), factor);
  // The last run may be cut, or the frame end before the surface does.
  if (const int32_t done = whole * factor; done < width)
    std::memset(chunk + done, row[std::min(column + whole, to.width - 1)], static_cast<size_t>(width - done));
}

void CopyPlaneZoomed(const SurfacePlane& to, const ZoomedSource& source, int32_t factor) {
  const RepeatBytesKernel repeat = ActiveKernels().repeatBytes;
  Chunk chunk;
  for (int32_t first = 0; first < to.width; first += kColumns) {
    const int32_t width = std::min(to.width - first, kColumns);
    for (int32_t row = 0; row < to.height; row += factor) {
      const int64_t sourceRow = std::min(source.top + row / factor, to.height - 1);
      EnlargeColumns(chunk, repeat, to, source, source.plane + sourceRow * source.stride, first, width,
                     factor);
      const int32_t end = std::min(row + factor, to.height);
      for (int32_t copy = row; copy < end; ++copy)
        std::memcpy(to.Row(copy) + first, chunk, static_cast<size_t>(width));
    }
  }
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

void CopyZoomed(const Yv12Surface& surface, const ConstFrameView& frame, const ZoomState& zoom) {
  const PixelRect window = ZoomWindow(zoom, surface.width, surface.height);
  const int32_t chromaLeft = window.left / 2;
  const int32_t chromaTop = window.top / 2;
  CopyPlaneZoomed(surface.Luma(), {frame.y, frame.strideY, window.left, window.top}, zoom.factor);
  CopyPlaneZoomed(surface.V(), {frame.v, frame.strideV, chromaLeft, chromaTop}, zoom.factor);
  CopyPlaneZoomed(surface.U(), {frame.u, frame.strideU, chromaLeft, chromaTop}, zoom.factor);
}

}  // namespace libnivral
