// SPDX-License-Identifier: MIT
#include "display/even_chroma.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr uint8_t kNeutral = 128;

bool HasWholeRows(const FrameView& f, int32_t width, int32_t height) {
  if (!f.y || f.strideY < width) return false;
  if (width < 2 || height < 2) return true;  // no chroma samples at all
  return f.u && f.v && f.strideU >= width / 2 && f.strideV >= width / 2;
}

/// Copies (width / 2) x (height / 2) samples into a plane of (width + 1) / 2 by (height + 1) / 2. False
/// without the memory.
bool RoundUp(NothrowList<uint8_t>& target, const uint8_t* plane, int32_t stride, int32_t width,
             int32_t height) {
  const auto columns = static_cast<size_t>(width / 2);
  const auto rows = static_cast<size_t>(height / 2);
  const size_t targetColumns = static_cast<size_t>(width) - columns;
  const size_t targetRows = static_cast<size_t>(height) - rows;
  if (!target.resize(targetColumns * targetRows)) return false;
  if (columns == 0 || rows == 0) {
    std::fill_n(target.data(), target.size(), kNeutral);
    return true;
  }
  for (size_t row = 0; row < targetRows; ++row) {
    const uint8_t* from = plane + std::min(row, rows - 1) * static_cast<size_t>(stride);
    uint8_t* to = target.data() + row * targetColumns;
    std::memcpy(to, from, columns);
    to[targetColumns - 1] = from[columns - 1];
  }
  return true;
}

}  // namespace

std::optional<FrameView> EvenChroma::Complete(const FrameView& frame, int32_t width, int32_t height) {
  if (width < 1 || height < 1 || !HasWholeRows(frame, width, height)) return std::nullopt;
  if (width % 2 == 0 && height % 2 == 0) return frame;
  if (!RoundUp(m_u, frame.u, frame.strideU, width, height) ||
      !RoundUp(m_v, frame.v, frame.strideV, width, height))
    return std::nullopt;
  FrameView complete = frame;
  complete.u = m_u.data();
  complete.v = m_v.data();
  complete.strideU = complete.strideV = width - width / 2;
  return complete;
}
