// SPDX-License-Identifier: MIT
#include "display/working_frame.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace {

bool InRange(int32_t value, int32_t limit) {
  return value >= -limit && value <= limit;
}

void MirrorPlane(uint8_t* plane, size_t bytes, size_t width, uint32_t mode) {
  if (width == 0) return;
  if (mode == static_cast<uint32_t>(MirrorMode::HalfTurn)) {
    std::reverse(plane, plane + bytes / width * width);
  } else if (mode == static_cast<uint32_t>(MirrorMode::Horizontal)) {
    for (uint8_t* row = plane; row + width <= plane + bytes; row += width)
      std::reverse(row, row + width);
  }
}

}  // namespace

bool IsAdjustActive(const ColorValues& c) {
  if (c.brightness == 0 && c.contrast == 0 && c.saturation == 0 && c.hue == 0) return false;
  return InRange(c.hue, kMaxHue) && InRange(c.contrast, kMaxContrast) &&
         InRange(c.saturation, kMaxSaturation) && InRange(c.brightness, kMaxBrightness);
}

FrameView WorkingFrame::Prepare(const FrameView& client, uint32_t height, uint32_t mirrorMode,
                                const ColorValues&) {
  if (client.strideY < 0 || client.strideU < 0 || client.strideV < 0) return client;
  const size_t sizeY = size_t{height} * static_cast<size_t>(client.strideY);
  const size_t sizeU = size_t{height / 2} * static_cast<size_t>(client.strideU);
  const size_t sizeV = size_t{height / 2} * static_cast<size_t>(client.strideV);
  if (!Reserve(sizeY + sizeU + sizeV)) return client;

  FrameView copy = client;
  copy.y = m_memory.get();
  copy.u = copy.y + sizeY;
  copy.v = copy.u + sizeU;
  std::memcpy(copy.y, client.y, sizeY);
  std::memcpy(copy.u, client.u, sizeU);
  std::memcpy(copy.v, client.v, sizeV);
  MirrorPlane(copy.y, sizeY, static_cast<size_t>(client.strideY), mirrorMode);
  MirrorPlane(copy.u, sizeU, static_cast<size_t>(client.strideV), mirrorMode);
  MirrorPlane(copy.v, sizeV, static_cast<size_t>(client.strideV), mirrorMode);
  return copy;
}

bool WorkingFrame::Reserve(size_t bytes) {
  if (bytes <= m_capacity) return true;
  m_memory.reset(new (std::nothrow) uint8_t[bytes]);
  m_capacity = m_memory ? bytes : 0;
  return m_memory != nullptr;
}
