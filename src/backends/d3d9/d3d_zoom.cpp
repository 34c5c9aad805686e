// SPDX-License-Identifier: MIT
#include "backends/d3d9/d3d_zoom.h"

#include <algorithm>

#include "picture/frame_view.h"

namespace libnivral {
namespace {

constexpr int32_t kMille = 1000;

/// One coordinate of the frame point under a displayed one.
int64_t FramePoint(int32_t displayed, bool mirrored, int32_t origin, int32_t factor) {
  const int64_t shown = mirrored ? int64_t{kMille} - displayed : displayed;
  return shown / factor + origin;
}

int32_t OriginAround(int64_t point, int32_t extent) {
  return static_cast<int32_t>(std::clamp<int64_t>(point - extent / 2, 0, kMille - extent));
}

}  // namespace

ZoomState ZoomTo(const ZoomState& now, uint32_t mirrorMode, int32_t x, int32_t y, int32_t factor) {
  if (factor <= 1) return {};
  ZoomState zoom = now;
  if (factor <= kMaxZoom && !(factor == kMaxZoom && now.factor == kMaxZoom)) {
    const auto mirror = static_cast<MirrorMode>(mirrorMode);
    const bool known = mirror <= MirrorMode::HalfTurn;
    const bool mirrorX = mirror != MirrorMode::None;
    const bool mirrorY = mirror == MirrorMode::HalfTurn;
    const int32_t extent = kMille / factor;
    zoom.x = OriginAround(known ? FramePoint(x, mirrorX, now.x, now.factor) : x, extent);
    zoom.y = OriginAround(known ? FramePoint(y, mirrorY, now.y, now.factor) : y, extent);
  }
  zoom.factor = std::min(factor, kMaxZoom);
  return zoom;
}

PixelRect ZoomWindow(const ZoomState& zoom, int32_t width, int32_t height) {
  const auto left = static_cast<int32_t>(int64_t{zoom.x} * width / kMille);
  const auto top = static_cast<int32_t>(int64_t{zoom.y} * height / kMille);
  return {left, top, left + width / zoom.factor, top + height / zoom.factor};
}

}  // namespace libnivral
