// SPDX-License-Identifier: MIT
#include "backends/ddraw/even_frame.h"

#include <algorithm>

std::optional<FrameView> EvenFrame::Complete(const FrameView& frame, int32_t width, int32_t height) {
  std::optional<FrameView> whole = m_chroma.Complete(frame, width, height);
  if (!whole || (width % 2 == 0 && height % 2 == 0)) return whole;

  const int32_t evenWidth = width + width % 2;
  const int32_t evenHeight = height + height % 2;
  if (!m_luma.resize(static_cast<size_t>(evenWidth) * static_cast<size_t>(evenHeight))) return std::nullopt;
  for (int32_t row = 0; row < evenHeight; ++row) {
    const uint8_t* from = frame.y + static_cast<ptrdiff_t>(std::min(row, height - 1)) * frame.strideY;
    uint8_t* to = m_luma.data() + static_cast<ptrdiff_t>(row) * evenWidth;
    std::copy_n(from, width, to);
    to[evenWidth - 1] = from[width - 1];
  }
  whole->y = m_luma.data();
  whole->strideY = evenWidth;
  return whole;
}
