// SPDX-License-Identifier: MIT
#include "backends/d3d9/mosaic_blocks.h"

#include <algorithm>
#include <cstring>

namespace {

/// Columns built at a time, a row's worth at the usual sizes.
constexpr int32_t kChunk = 4096;

int32_t BlockStart(int32_t sample) {
  return sample / kMosaicBlock * kMosaicBlock;
}

/// Which source samples stand for the blocks of a surface.
class BlockSource {
 public:
  BlockSource(const ConstFrameView& frame, const Yv12Surface& surface, const ZoomState& zoom,
              uint32_t mirrorMode)
      : m_frame(frame),
        m_lastColumn(surface.width - 1),
        m_lastRow(surface.height - 1),
        m_window(ZoomWindow(zoom, surface.width, surface.height)),
        m_factor(zoom.factor),
        m_mirror(static_cast<MirrorMode>(mirrorMode)) {}

  int32_t SampleRow(int32_t row) const {
    const int32_t sample = row / m_factor;
    const int32_t found = m_mirror == MirrorMode::HalfTurn ? m_window.bottom - 1 - BlockStart(sample)
                                                           : BlockStart(sample + m_window.top);
    return std::clamp(found, 0, m_lastRow);
  }

  int32_t SampleColumn(int32_t column) const {
    const int32_t block = BlockStart(column / m_factor);
    const bool mirrored = m_mirror == MirrorMode::Horizontal || m_mirror == MirrorMode::HalfTurn;
    const int32_t found = mirrored ? m_window.right - 1 - block : BlockStart(m_window.left) + block;
    return std::clamp(found, 0, m_lastColumn);
  }

  /// Fills `to` with the samples for columns [first, last) of the surface rows that show `sampleRow`.
  void FillRow(uint8_t* to, int32_t sampleRow, int32_t first, int32_t last) const {
    const uint8_t* source = m_frame.y + int64_t{sampleRow} * m_frame.strideY;
    const int32_t blockWidth = kMosaicBlock * m_factor;
    for (int32_t column = first; column < last;) {
      const int32_t end = std::min((column / blockWidth + 1) * blockWidth, last);
      std::memset(to, source[SampleColumn(column)], static_cast<size_t>(end - column));
      to += end - column;
      column = end;
    }
  }

 private:
  const ConstFrameView& m_frame;
  int32_t m_lastColumn;
  int32_t m_lastRow;
  PixelRect m_window;
  int32_t m_factor;
  MirrorMode m_mirror;
};

}  // namespace

// A row of blocks is built once in cached memory and written to each surface row that shows it.
void PixelateLuma(const Yv12Surface& surface, const ConstFrameView& frame, const PixelRect& area,
                  const ZoomState& zoom, uint32_t mirrorMode) {
  const BlockSource source(frame, surface, zoom, mirrorMode);
  const SurfacePlane luma = surface.Luma();
  uint8_t chunk[kChunk];
  for (int32_t first = area.left; first < area.right; first += kChunk) {
    const int32_t last = std::min(area.right, first + kChunk);
    int32_t built = -1;
    for (int32_t row = area.top; row < area.bottom; ++row) {
      if (const int32_t sampleRow = source.SampleRow(row); sampleRow != built) {
        source.FillRow(chunk, sampleRow, first, last);
        built = sampleRow;
      }
      std::memcpy(luma.Row(row) + first, chunk, static_cast<size_t>(last - first));
    }
  }
}
