// SPDX-License-Identifier: MIT
// The zoomed copy: a source row is enlarged once, in memory that is in the cache, and then written to each of
// the surface rows that show it.
#include <algorithm>
#include <cstring>

#include "backends/d3d9/surface_copy.h"

namespace {

/// Columns enlarged at a time: a row's worth at the usual sizes, and whole runs at every zoom.
constexpr int32_t kChunk = 3360;
static_assert(kChunk % (3 * 5 * 7 * kMaxZoom) == 0);

/// Runs are written as eight bytes whatever their length, the next one over the excess.
constexpr size_t kSlack = 8;

using Chunk = uint8_t[kChunk + kSlack];

struct ZoomedSource {
  const uint8_t* plane;
  int32_t stride;
  int32_t left;  ///< of the zoom window, in samples of this plane
  int32_t top;
};

template <int Factor>
void Enlarge(uint8_t* to, const uint8_t* from, int32_t count) {
  for (int32_t i = 0; i < count; ++i) {
    const uint64_t run = from[i] * 0x0101010101010101u;
    std::memcpy(to, &run, sizeof(run));
    to += Factor;
  }
}

/// Factors 2 and 4 fit eight bytes without excess, so several samples go into one write.
template <>
void Enlarge<2>(uint8_t* to, const uint8_t* from, int32_t count) {
  int32_t i = 0;
  for (; i + 4 <= count; i += 4) {
    uint32_t samples;
    std::memcpy(&samples, from + i, sizeof(samples));
    uint64_t spread = samples;
    spread = (spread | spread << 16) & 0x0000FFFF0000FFFFu;
    spread = (spread | spread << 8) & 0x00FF00FF00FF00FFu;
    spread |= spread << 8;
    std::memcpy(to + 2 * i, &spread, sizeof(spread));
  }
  for (; i < count; ++i)
    to[2 * i] = to[2 * i + 1] = from[i];
}

template <>
void Enlarge<4>(uint8_t* to, const uint8_t* from, int32_t count) {
  for (int32_t i = 0; i < count; i += 2) {
    const uint64_t second = i + 1 < count ? from[i + 1] : 0;
    const uint64_t runs = (from[i] | second << 32) * 0x01010101u;
    std::memcpy(to + 4 * i, &runs, sizeof(runs));
  }
}

/// Repeats each of `count` bytes `factor` times. May write kSlack bytes beyond.
void Enlarge(uint8_t* to, const uint8_t* from, int32_t count, int32_t factor) {
  switch (factor) {
    case 2:
      return Enlarge<2>(to, from, count);
    case 3:
      return Enlarge<3>(to, from, count);
    case 4:
      return Enlarge<4>(to, from, count);
    case 5:
      return Enlarge<5>(to, from, count);
    case 6:
      return Enlarge<6>(to, from, count);
    case 7:
      return Enlarge<7>(to, from, count);
    default:
      return Enlarge<8>(to, from, count);
  }
}

/// Fills `width` enlarged columns from column `first` of the surface on.
void EnlargeColumns(Chunk& chunk, const SurfacePlane& to, const ZoomedSource& source, const uint8_t* row,
                    int32_t first, int32_t width, int32_t factor) {
  const int32_t column = source.left + first / factor;
  const int32_t wanted = (width + factor - 1) / factor;
  const int32_t present = std::clamp(to.width - column, 0, wanted);
  Enlarge(chunk, row + column, present, factor);
  if (const int32_t done = present * factor; done < width)
    std::memset(chunk + done, row[to.width - 1], static_cast<size_t>(width - done));
}

void CopyPlaneZoomed(const SurfacePlane& to, const ZoomedSource& source, int32_t factor) {
  Chunk chunk;
  for (int32_t first = 0; first < to.width; first += kChunk) {
    const int32_t width = std::min(to.width - first, kChunk);
    for (int32_t row = 0; row < to.height; row += factor) {
      const int64_t sourceRow = std::min(source.top + row / factor, to.height - 1);
      EnlargeColumns(chunk, to, source, source.plane + sourceRow * source.stride, first, width, factor);
      const int32_t end = std::min(row + factor, to.height);
      for (int32_t copy = row; copy < end; ++copy)
        std::memcpy(to.Row(copy) + first, chunk, static_cast<size_t>(width));
    }
  }
}

}  // namespace

void CopyZoomed(const Yv12Surface& surface, const FrameView& frame, const ZoomState& zoom) {
  const PixelRect window = ZoomWindow(zoom, surface.width, surface.height);
  const int32_t chromaLeft = window.left / 2;
  const int32_t chromaTop = window.top / 2;
  CopyPlaneZoomed(surface.Luma(), {frame.y, frame.strideY, window.left, window.top}, zoom.factor);
  CopyPlaneZoomed(surface.V(), {frame.v, frame.strideV, chromaLeft, chromaTop}, zoom.factor);
  CopyPlaneZoomed(surface.U(), {frame.u, frame.strideU, chromaLeft, chromaTop}, zoom.factor);
}
