// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>

#include "display/frame_view.h"

/// Whether settings act on the picture: not all zero and each within its range.
bool IsAdjustActive(const ColorValues& values);

/// A private copy of a frame, kept from frame to frame so that its memory is allocated once.
class WorkingFrame {
 public:
  /// Copies the client's planes, adjusts their colours when `colors` is active and mirrors them, all over
  /// whole strides (padding moves with the pixels; rows of both chroma planes are mirrored strideV wide).
  /// Returns the copy, valid until the next call, or the client's own planes when there is no memory for one.
  FrameView Prepare(const FrameView& client, uint32_t height, uint32_t mirrorMode, const ColorValues& colors);

 private:
  bool Reserve(size_t bytes);

  std::unique_ptr<uint8_t[]> m_memory;
  size_t m_capacity = 0;
};
