// SPDX-License-Identifier: MIT
#pragma once

#include "display/even_chroma.h"

/// Rounds odd frames up to even sizes, as surfaces with shared chroma and converters of pixel pairs want
/// them: the last column and row are repeated.
class EvenFrame {
 public:
  /// The frame itself when both sizes are even, else a copy that lives until the next call. Nothing without
  /// the memory.
  std::optional<FrameView> Complete(const FrameView& frame, int32_t width, int32_t height);

 private:
  EvenChroma m_chroma;
  NothrowList<uint8_t> m_luma;
};
