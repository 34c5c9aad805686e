// SPDX-License-Identifier: MIT
// A locked surface on plain memory and the copies written down sample by sample.
#pragma once

#include <algorithm>
#include <vector>

#include "backends/d3d9/d3d_surface.h"
#include "support/frames.h"

constexpr uint8_t kUntouched = 0xA5;

/// Holds exactly the bytes of a surface, so that the address sanitiser sees any excess.
struct TestSurface {
  TestSurface(int32_t width, int32_t height, int32_t pitch)
      : bytes(static_cast<size_t>(pitch) * static_cast<size_t>(height) * 3 / 2, kUntouched),
        view{bytes.data(), pitch, width, height} {}

  bool operator==(const TestSurface& other) const { return bytes == other.bytes; }

  std::vector<uint8_t> bytes;
  Yv12Surface view;
};

/// Where the plane's sample of a surface row and column comes from.
template <class SampleAt>
void FillPlane(const SurfacePlane& plane, SampleAt&& sampleAt) {
  for (int32_t row = 0; row < plane.height; ++row)
    for (int32_t column = 0; column < plane.width; ++column)
      plane.Row(row)[column] = sampleAt(row, column);
}

/// Fills every plane with sampleAt(plane, stride, isChroma, row, column).
template <class SampleAt>
TestSurface ReferenceSurface(TestFrame& frame, int32_t pitch, SampleAt&& sampleAt) {
  TestSurface surface(frame.width, frame.height, pitch);
  const auto fill = [&](const SurfacePlane& plane, const std::vector<uint8_t>& from, int32_t stride,
                        bool chroma) {
    FillPlane(plane, [&](int32_t row, int32_t column) {
      return sampleAt(from.data(), stride, chroma, row, column);
    });
  };
  fill(surface.view.Luma(), frame.y, frame.strideY, false);
  fill(surface.view.V(), frame.v, frame.strideUV, true);
  fill(surface.view.U(), frame.u, frame.strideUV, true);
  return surface;
}

inline TestSurface ReferenceZoom(TestFrame& frame, int32_t pitch, const ZoomState& zoom) {
  return ReferenceSurface(
      frame, pitch, [&](const uint8_t* plane, int32_t stride, bool chroma, int32_t row, int32_t column) {
        const int32_t half = chroma ? 2 : 1;
        const int32_t x = zoom.x * frame.width / 1000 / half + column / zoom.factor;
        const int32_t y = zoom.y * frame.height / 1000 / half + row / zoom.factor;
        return plane[std::min(y, frame.height / half - 1) * stride + std::min(x, frame.width / half - 1)];
      });
}

inline TestSurface ReferenceArea(TestFrame& frame, int32_t pitch, const MosaicArea& area) {
  return ReferenceSurface(
      frame, pitch, [&](const uint8_t* plane, int32_t stride, bool chroma, int32_t row, int32_t column) {
        const int32_t half = chroma ? 2 : 1;
        const auto level = std::max(static_cast<int32_t>(area.level), 1);
        int32_t source = row;
        const auto isFresh = [&](int32_t r) {
          return r <= area.rect.top / half || r >= area.rect.bottom / half || r % level == 0;
        };
        if (column >= area.rect.left / half && column < area.rect.right / half)
          while (!isFresh(source))
            --source;
        return plane[source * stride + column];
      });
}

/// The luma sample that stands for a surface pixel under a mosaic.
inline uint8_t BlockSample(const TestFrame& frame, const ZoomState& zoom, uint32_t mirror, int32_t row,
                           int32_t column) {
  const int32_t x0 = zoom.x * frame.width / 1000;
  const int32_t y0 = zoom.y * frame.height / 1000;
  const int32_t x1 = x0 + frame.width / zoom.factor;
  const int32_t y1 = y0 + frame.height / zoom.factor;
  int32_t x = x0 / 16 * 16 + column / zoom.factor / 16 * 16;
  int32_t y = (row / zoom.factor + y0) / 16 * 16;
  if (mirror == 1 || mirror == 2) x = x1 - 1 - column / zoom.factor / 16 * 16;
  if (mirror == 2) y = y1 - 1 - row / zoom.factor / 16 * 16;
  x = std::clamp(x, 0, frame.width - 1);
  y = std::clamp(y, 0, frame.height - 1);
  return frame.y[static_cast<size_t>(y * frame.strideY + x)];
}
