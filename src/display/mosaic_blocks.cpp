// SPDX-License-Identifier: MIT
#include "display/mosaic_blocks.h"

#include <algorithm>
#include <cmath>

namespace libnivral {
namespace {

uint32_t ToByte(float value) {
  return static_cast<uint32_t>(std::clamp(static_cast<int32_t>(value), 0, 255));
}

uint32_t ToColour(const YuvMatrix& matrix, float y, float u, float v) {
  constexpr float kToRound = 0.5f;
  const float light = (y - matrix.black) * matrix.luma + kToRound;
  u -= 128, v -= 128;
  const uint32_t red = ToByte(light + v * matrix.redFromV);
  const uint32_t green = ToByte(light + u * matrix.greenFromU + v * matrix.greenFromV);
  const uint32_t blue = ToByte(light + u * matrix.blueFromU);
  return 0xFF000000 | red << 16 | green << 8 | blue;
}

}  // namespace

bool MosaicBlocks::Reset(const MosaicGrid& grid) {
  m_grid = grid;
  return m_colours.resize(static_cast<size_t>(grid.columns) * static_cast<size_t>(grid.rows));
}

MosaicBlocks::Sample MosaicBlocks::Find(int32_t pixel, int32_t pixels, int32_t samples, bool smooth) {
  const double at = (pixel + 0.5) * samples / pixels;
  if (!smooth) {
    const auto nearest = static_cast<int32_t>(at);
    return {nearest, nearest, 0};
  }
  const auto before = static_cast<int32_t>(std::floor(at - 0.5));
  const auto share = static_cast<int32_t>(std::lround((at - 0.5 - before) * 256));
  return {std::max(before, 0), std::min(before + 1, samples - 1), share};
}

/// A plane along a line of the display.
class MosaicBlocks::Row {
 public:
  Row(const uint8_t* plane, ptrdiff_t stride, const Sample& y)
      : m_first(plane + y.first * stride), m_second(plane + y.second * stride), m_share(y.share) {}

  float At(const Sample& x) const {
    const auto mix = [](int32_t first, int32_t second, int32_t share) {
      return first * 256 + (second - first) * share;
    };
    const int32_t first = mix(m_first[x.first], m_first[x.second], x.share);
    const int32_t second = mix(m_second[x.first], m_second[x.second], x.share);
    return static_cast<float>(mix(first, second, m_share)) / 65536;
  }

 private:
  const uint8_t* m_first;
  const uint8_t* m_second;
  int32_t m_share;
};

bool MosaicBlocks::TakeFrom(const StretchedVideo& video, const MosaicGrid& grid) {
  if (!Reset(grid) || !m_columns.resize(static_cast<size_t>(grid.columns))) return false;
  const int32_t width = video.width, height = video.height;
  const auto find = [&](int32_t at, int32_t pixels, int32_t samples) {
    return Column{Find(at, pixels, samples, video.smooth),
                  Find(at, pixels, samples - samples / 2, video.smooth)};
  };
  for (int32_t column = 0; column < grid.columns; ++column)
    m_columns.data()[column] = find(grid.source.left + grid.SourceX(column), video.displayWidth, width);
  const ConstFrameView& planes = video.planes;
  uint32_t* colour = m_colours.data();
  for (int32_t row = 0; row < grid.rows; ++row) {
    const auto [luma, chroma] = find(grid.source.top + grid.SourceY(row), video.displayHeight, height);
    const Row lumaRow(planes.y, planes.strideY, luma);
    const Row blueRow(planes.u, planes.strideU, chroma), redRow(planes.v, planes.strideV, chroma);
    for (const Column& x : m_columns)
      *colour++ = ToColour(video.matrix, lumaRow.At(x.luma), blueRow.At(x.chroma), redRow.At(x.chroma));
  }
  return true;
}

bool MosaicBlocks::TakeFrom(const uint32_t* source, const MosaicGrid& grid) {
  if (!Reset(grid)) return false;
  uint32_t* colour = m_colours.data();
  for (int32_t row = 0; row < grid.rows; ++row) {
    const uint32_t* const line = source + grid.SourceY(row) * grid.source.Width();
    for (int32_t column = 0; column < grid.columns; ++column)
      *colour++ = line[grid.SourceX(column)];
  }
  return true;
}

void MosaicBlocks::Paint(const PixelRect& area, uint32_t colour, const uint32_t* picture, ptrdiff_t pitch) {
  const int32_t left = m_grid.ColumnsLeftOf(area.left), right = m_grid.ColumnsLeftOf(area.right);
  const int32_t top = m_grid.RowsAbove(area.top), bottom = m_grid.RowsAbove(area.bottom);
  for (int32_t row = top; row < bottom; ++row) {
    const ptrdiff_t y = ptrdiff_t{m_grid.source.top} + m_grid.SourceY(row) - area.top;
    uint32_t* const blocks = m_colours.data() + ptrdiff_t{row} * m_grid.columns;
    const auto* const line =
        picture ? reinterpret_cast<const uint32_t*>(reinterpret_cast<const uint8_t*>(picture) + y * pitch)
                : nullptr;
    for (int32_t column = left; column < right; ++column) {
      const ptrdiff_t x = ptrdiff_t{m_grid.source.left} + m_grid.SourceX(column) - area.left;
      // What is white leaves the other as it is.
      blocks[column] = Blend(line ? line[x] & colour : colour, blocks[column]);
    }
  }
}

}  // namespace libnivral
