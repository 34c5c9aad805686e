// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "colour/adjust_tables.h"
#include "picture/frame_view.h"

namespace libnivral {

/// A private copy of a frame, kept from frame to frame so that its memory and the tables of the colour
/// settings are made once.
class WorkingFrame {
 public:
  /// Copies the client's planes, adjusts their colours when `colours` is active and mirrors them, all over
  /// whole strides (padding moves with the pixels; rows of both chroma planes are mirrored strideV wide). The
  /// copy of a bottom-up frame goes down in memory and has no padding.
  /// Returns the copy, valid until the next call. Returns the client's own planes when they do not hold such
  /// a frame or there is no memory for a copy; chroma planes without a row always stay the client's.
  FrameView Prepare(const FrameView& client, uint32_t width, uint32_t height, uint32_t mirrorMode,
                    const ColourValues& colours);

 private:
  /// Null when there is no memory.
  uint8_t* Reserve(size_t bytes);

  AdjustTables m_tables;
  std::unique_ptr<uint8_t[]> m_memory;
  size_t m_capacity = 0;
};

}  // namespace libnivral
