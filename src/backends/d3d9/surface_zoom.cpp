// SPDX-License-Identifier: MIT
// The zoomed copy: a source row is enlarged once, in memory that is in the cache, and then written to each of
// the surface rows that show it.
#include <algorithm>
#include <cstring>

#include "backends/d3d9/surface_copy.h"

#if defined(__SSE2__) || defined(_M_X64)
#include <emmintrin.h>
#endif

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

/// Eight samples fill three little-endian words exactly; overlapping writes would cost three times as much.
template <>
void Enlarge<3>(uint8_t* to, const uint8_t* from, int32_t count) {
  constexpr uint64_t kRun = 0x010101;
  constexpr uint64_t kPair = 0x0101;
  int32_t i = 0;
  for (; i + 8 <= count; i += 8, from += 8, to += 24) {
    const uint64_t words[] = {from[0] * kRun | from[1] * kRun << 24 | from[2] * kPair << 48,
                              from[2] | from[3] * kRun << 8 | from[4] * kRun << 32 | uint64_t{from[5]} << 56,
                              from[5] * kPair | from[6] * kRun << 16 | from[7] * kRun << 40};
    std::memcpy(to, words, sizeof(words));
  }
  for (; i < count; ++i, ++from, to += 3)
    std::memset(to, *from, 3);
}

#if defined(__SSE2__) || defined(_M_X64)
void Store(uint8_t* to, __m128i bytes) {
  _mm_storeu_si128(reinterpret_cast<__m128i*>(to), bytes);
}

/// Factors 2 and 4 double 16 samples once and twice; returns how many samples that took.
template <int Factor>
int32_t EnlargeBlocks(uint8_t* to, const uint8_t* from, int32_t count) {
  int32_t i = 0;
  for (; i + 16 <= count; i += 16) {
    const __m128i samples = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + i));
    for (const __m128i half : {_mm_unpacklo_epi8(samples, samples), _mm_unpackhi_epi8(samples, samples)}) {
      if constexpr (Factor == 4) {
        Store(to, _mm_unpacklo_epi8(half, half));
        Store(to + 16, _mm_unpackhi_epi8(half, half));
      } else {
        Store(to, half);
      }
      to += Factor * 8;
    }
  }
  return i;
}

template <>
void Enlarge<2>(uint8_t* to, const uint8_t* from, int32_t count) {
  for (int32_t i = EnlargeBlocks<2>(to, from, count); i < count; ++i)
    std::memset(to + 2 * i, from[i], 2);
}

template <>
void Enlarge<4>(uint8_t* to, const uint8_t* from, int32_t count) {
  for (int32_t i = EnlargeBlocks<4>(to, from, count); i < count; ++i)
    std::memset(to + 4 * i, from[i], 4);
}
#endif

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
