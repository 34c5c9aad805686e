// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "colour/adjust_tables.h"
#include "picture/frame_view.h"

/// A private copy of a frame, kept from frame to frame so that its memory and the tables of the colour
/// settings are made once.
class WorkingFrame {
 public:
  /// Copies the client's planes, adjusts their colours when `colors` is active and mirrors them, all over
  /// whole strides (padding moves with the pixels; rows of both chroma planes are mirrored strideV wide).
  /// Returns the copy, valid until the next call. Returns the client's own planes when there is no memory for
  /// a copy, when a stride is negative or when a plane is missing; a plane without bytes (stride 0, or chroma
  /// of a single row) always stays the client's.
  FrameView Prepare(const FrameView& client, uint32_t height, uint32_t mirrorMode, const ColorValues& colors);

 private:
  /// Null when there is no memory.
  uint8_t* Reserve(size_t bytes);

  AdjustTables m_tables;
  std::unique_ptr<uint8_t[]> m_memory;
  size_t m_capacity = 0;
};
