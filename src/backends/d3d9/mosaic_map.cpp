// SPDX-License-Identifier: MIT
#include "backends/d3d9/mosaic_map.h"

#include <algorithm>

#include "picture/frame_view.h"

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
