// SPDX-License-Identifier: MIT
#include "backends/d3d9/d3d_mosaic.h"

#include <algorithm>
#include <cstring>

#include "picture/frame_view.h"

namespace libnivral {
namespace {

constexpr int64_t kMille = 1000;

struct Span {
  int64_t first;
  int64_t last;
};

int32_t ClampMille(int64_t value) {
  return static_cast<int32_t>(std::clamp<int64_t>(value, 0, kMille));
}

bool CanMap(const ZoomState& zoom, uint32_t mirrorMode) {
  return zoom.factor >= 1 && zoom.factor <= kMaxZoom &&
         mirrorMode <= static_cast<uint32_t>(MirrorMode::HalfTurn);
}

bool MirrorsX(uint32_t mirrorMode) {
  return mirrorMode != static_cast<uint32_t>(MirrorMode::None);
}

bool MirrorsY(uint32_t mirrorMode) {
  return mirrorMode == static_cast<uint32_t>(MirrorMode::HalfTurn);
}

int64_t FrameCoordinate(int32_t displayed, bool mirrored, int64_t origin, int64_t factor) {
  return mirrored ? origin + kMille / factor - displayed / factor : displayed / factor + origin;
}

Span FrameSpan(int32_t first, int32_t last, bool mirrored, int64_t origin, int64_t factor) {
  if (mirrored) std::swap(first, last);
  return {ClampMille(FrameCoordinate(first, mirrored, origin, factor)),
          ClampMille(FrameCoordinate(last, mirrored, origin, factor))};
}

/// One axis of a mosaic on the surface, in pixels.
Span SurfaceSpan(Span frame, bool mirrored, int64_t origin, const ZoomState& zoom, int64_t pixels) {
  const int64_t extent = kMille / zoom.factor;
  if (mirrored) {
    frame = {kMille - frame.last, kMille - frame.first};
    origin = kMille - extent - origin;
  }
  if (zoom.Enlarges()) {
    const bool outside = frame.first > origin + extent || frame.last < origin;
    frame = outside ? Span{0, 0}
                    : Span{std::max<int64_t>(frame.first - origin, 0) * zoom.factor,
                           std::min(frame.last - origin, extent) * zoom.factor};
  }
  return {std::clamp<int64_t>(frame.first * pixels / kMille, 0, pixels),
          std::clamp<int64_t>(frame.last * pixels / kMille, 0, pixels)};
}

}  // namespace

std::optional<MilleRect> FrameRectUnder(const MilleRect& displayed, const ZoomState& zoom,
                                        uint32_t mirrorMode) {
  if (!CanMap(zoom, mirrorMode)) return std::nullopt;
  const Span x = FrameSpan(displayed.left, displayed.right, MirrorsX(mirrorMode), zoom.x, zoom.factor);
  const Span y = FrameSpan(displayed.top, displayed.bottom, MirrorsY(mirrorMode), zoom.y, zoom.factor);
  return MilleRect{static_cast<int32_t>(x.first), static_cast<int32_t>(y.first), static_cast<int32_t>(x.last),
                   static_cast<int32_t>(y.last)};
}

std::optional<MillePoint> FramePointUnder(const MillePoint& displayed, const ZoomState& zoom,
                                          uint32_t mirrorMode) {
  if (!CanMap(zoom, mirrorMode)) return std::nullopt;
  return MillePoint{ClampMille(FrameCoordinate(displayed.x, MirrorsX(mirrorMode), zoom.x, zoom.factor)),
                    ClampMille(FrameCoordinate(displayed.y, MirrorsY(mirrorMode), zoom.y, zoom.factor))};
}

int32_t PickMosaic(std::span<const MilleRect> mosaics, const MillePoint& point) {
  const auto hit = std::find_if(mosaics.begin(), mosaics.end(), [&](const MilleRect& mosaic) {
    return mosaic.left <= point.x && point.x < mosaic.right && mosaic.top <= point.y &&
           point.y < mosaic.bottom;
  });
  return hit == mosaics.end() ? -1 : static_cast<int32_t>(hit - mosaics.begin());
}

PixelRect MosaicOnSurface(const MilleRect& mosaic, const ZoomState& zoom, uint32_t mirrorMode, int32_t width,
                          int32_t height) {
  const Span x = SurfaceSpan({mosaic.left, mosaic.right}, MirrorsX(mirrorMode), zoom.x, zoom, width);
  const Span y = SurfaceSpan({mosaic.top, mosaic.bottom}, MirrorsY(mirrorMode), zoom.y, zoom, height);
  return {static_cast<int32_t>(x.first), static_cast<int32_t>(y.first), static_cast<int32_t>(x.last),
          static_cast<int32_t>(y.last)};
}

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

}  // namespace libnivral
