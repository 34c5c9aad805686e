// SPDX-License-Identifier: MIT
#include "display/working_frame.h"

#include <algorithm>
#include <new>

#include "display/frame_copier.h"

namespace {

/// Planes start on cache lines.
constexpr size_t kAlignment = 64;

size_t AlignUp(size_t bytes) {
  return (bytes + kAlignment - 1) / kAlignment * kAlignment;
}

bool IsReadable(const uint8_t* plane, int32_t stride) {
  return stride == 0 || (stride > 0 && plane);
}

/// Sizes in bytes. 64-bit products of a 32-bit height and a positive 31-bit stride do not overflow, nor does
/// the sum of one whole and two half ones.
struct PlaneSizes {
  PlaneSizes(const FrameView& f, uint32_t height)
      : y(size_t{height} * static_cast<size_t>(f.strideY)),
        u(size_t{height / 2} * static_cast<size_t>(f.strideU)),
        v(size_t{height / 2} * static_cast<size_t>(f.strideV)) {}
  size_t y;
  size_t u;
  size_t v;
};

}  // namespace

FrameView WorkingFrame::Prepare(const FrameView& client, uint32_t height, uint32_t mirrorMode,
                                const ColorValues& colors) {
  if (!IsReadable(client.y, client.strideY) || !IsReadable(client.u, client.strideU) ||
      !IsReadable(client.v, client.strideV))
    return client;
  const bool adjust = IsAdjustActive(colors);
  if (adjust) m_tables.Update(colors);
  const PlaneSizes size(client, height);
  uint8_t* const memory = Reserve(AlignUp(size.y) + AlignUp(size.u) + size.v);
  if (!memory) return client;

  FrameView copy = client;
  if (size.y != 0) copy.y = memory;
  if (size.u != 0) copy.u = memory + AlignUp(size.y);
  if (size.v != 0) copy.v = memory + AlignUp(size.y) + AlignUp(size.u);
  const FrameCopier copier(mirrorMode, adjust ? &m_tables : nullptr);
  copier.CopyLuma({copy.y, client.y, size.y}, static_cast<size_t>(client.strideY));
  const PlaneCopy u{copy.u, client.u, size.u};
  const PlaneCopy v{copy.v, client.v, size.v};
  if (client.strideU == client.strideV) {
    copier.CopyChroma(u, v, static_cast<size_t>(client.strideV));
  } else {
    const size_t adjusted = static_cast<size_t>(client.strideU) * height / 2;
    copier.CopyUnevenChroma(u, v, static_cast<size_t>(client.strideV), height / 2, adjusted);
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
