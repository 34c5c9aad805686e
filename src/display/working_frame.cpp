// SPDX-License-Identifier: MIT
#include "display/working_frame.h"

#include <algorithm>
#include <new>

#include "display/frame_copier.h"

namespace libnivral {
namespace {

/// Planes start on cache lines.
constexpr size_t kAlignment = 64;

size_t AlignUp(size_t bytes) {
  return (bytes + kAlignment - 1) / kAlignment * kAlignment;
}

/// Sizes in bytes of planes with positive strides. 64-bit products of a 32-bit height and a positive 31-bit
/// stride do not overflow, nor does the sum of one whole and two half ones.
struct PlaneSizes {
  PlaneSizes(const FrameView& f, uint32_t width, uint32_t height)
      : y(size_t{height} * static_cast<size_t>(f.strideY)),
        u(width < 2 ? 0 : size_t{height / 2} * static_cast<size_t>(f.strideU)),
        v(width < 2 ? 0 : size_t{height / 2} * static_cast<size_t>(f.strideV)) {}
  size_t y;
  size_t u;
  size_t v;
};

/// Copies whole strides between planes of the same layout.
void CopyStrides(const FrameCopier& copier, const FrameView& to, const FrameView& from,
                 const PlaneSizes& size, uint32_t height) {
  copier.CopyLuma({to.y, from.y, size.y}, static_cast<size_t>(from.strideY));
  const PlaneCopy u{to.u, from.u, size.u};
  const PlaneCopy v{to.v, from.v, size.v};
  if (from.strideU == from.strideV) return copier.CopyChroma(u, v, static_cast<size_t>(from.strideV));
  const size_t adjusted = static_cast<size_t>(from.strideU) * height / 2;
  copier.CopyUnevenChroma(u, v, static_cast<size_t>(from.strideV), height / 2, adjusted);
}

}  // namespace

FrameView WorkingFrame::Prepare(const FrameView& client, uint32_t width, uint32_t height, uint32_t mirrorMode,
                                const ColourValues& colours) {
  if (!HoldsFrame(client, width, height)) return client;
  FrameView copy = client;
  const bool bottomUp = ConstFrameView(client).IsBottomUp();
  if (bottomUp) {
    copy.strideY = static_cast<int32_t>(width);
    copy.strideU = copy.strideV = copy.strideY / 2;
  }
  const PlaneSizes size(copy, width, height);
  uint8_t* const memory = Reserve(AlignUp(size.y) + AlignUp(size.u) + size.v);
  if (!memory) return client;
  copy.y = memory;
  if (size.u != 0) copy.u = memory + AlignUp(size.y);
  if (size.v != 0) copy.v = memory + AlignUp(size.y) + AlignUp(size.u);

  const bool adjust = IsAdjustActive(colours);
  if (adjust) m_tables.Update(colours);
  const FrameCopier copier(mirrorMode, adjust ? &m_tables : nullptr);
  if (bottomUp) {
    copier.CopyFrame(copy, client, width, height);
  } else {
    CopyStrides(copier, copy, client, size, height);
  }
  return copy;
}

uint8_t* WorkingFrame::Reserve(size_t bytes) {
  if (bytes > m_capacity) {
    m_memory.reset(new (std::nothrow) uint8_t[bytes + kAlignment]);
    m_capacity = m_memory ? bytes : 0;
  }
  void* start = m_memory.get();
  size_t space = m_capacity + kAlignment;
  return static_cast<uint8_t*>(start ? std::align(kAlignment, m_capacity, start, space) : nullptr);
}

}  // namespace libnivral
