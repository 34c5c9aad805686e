// SPDX-License-Identifier: MIT
#include "player/embed/pane.h"

#include <cstring>
#include <stdexcept>

Pane::Pane(nivral::Backend backend, HWND window, int width, int height)
    : m_backend(backend), m_window(window), m_width(width), m_height(height) {
  if (!m_display.Open(backend)) throw std::runtime_error("the library opened no pane");
  m_display.SetWindow(window);
  m_display.Init(static_cast<uint32_t>(width), static_cast<uint32_t>(height));
}

void Pane::SetMirror(nivral::Mirror mirror) {
  m_mirror = mirror;
  Set([mirror](nivral::Display& display) { display.SetMirror(mirror); });
}

void Pane::SetZoom(uint32_t x, uint32_t y, uint32_t factor) {
  m_isZoomed = factor > 1 && m_backend == nivral::Backend::kDirect3D9;
  Set([=](nivral::Display& display) { display.SetZoom(x, y, factor); });
}

/// Mirroring turns rows as long as they are in memory, so that nothing but picture may be in them.
void Pane::RemovePadding(nivral::Frame& frame) {
  const auto width = static_cast<uint32_t>(m_width);
  const auto height = static_cast<uint32_t>(m_height);
  m_packed.resize(size_t{width} * height + 2 * size_t{width / 2} * (height / 2));
  uint8_t* to = m_packed.data();
  const auto pack = [&to](const uint8_t*& plane, uint32_t stride, uint32_t columns, uint32_t rows) {
    const uint8_t* from = plane;
    plane = to;
    for (uint32_t row = 0; row < rows; ++row, from += stride, to += columns)
      std::memcpy(to, from, columns);
  };
  pack(frame.y, frame.strideY, width, height);
  pack(frame.u, frame.strideUV, width / 2, height / 2);
  pack(frame.v, frame.strideUV, width / 2, height / 2);
  frame.strideY = width;
  frame.strideUV = width / 2;
}

void Pane::SetSize(int width, int height) {
  if (m_backend == nivral::Backend::kDirect3D9) m_display.Free();  // else it keeps the old size's pixels
  m_display.Init(static_cast<uint32_t>(width), static_cast<uint32_t>(height));
}

nivral::Result Pane::Draw(const Frame& frame) {
  m_jobs.Run(m_display);
  if (frame.width != m_width || frame.height != m_height) {
    m_width = frame.width;
    m_height = frame.height;
    SendMessageW(m_window, kNewVideoSize, static_cast<WPARAM>(m_width), m_height);
  }
  nivral::Frame planes{frame.y,     frame.strideY,  frame.u,
                       frame.v,     frame.strideUV, static_cast<uint32_t>(frame.number),
                       frame.number};
  if (m_mirror.load() != nivral::Mirror::kNone) RemovePadding(planes);
  return m_display.Draw(planes);
}
