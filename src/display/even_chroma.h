// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

#include "picture/frame_view.h"
#include "util/nothrow_list.h"

/// Rounds chroma planes up for consumers that take (size + 1) / 2 samples each way, where the client's frames
/// have size / 2: the missing column and row of an odd-sized video repeat the last ones.
class EvenChroma {
 public:
  /// The frame itself when both sizes are even, else one with chroma planes that live until the next call.
  /// Nothing when a plane is missing or a stride is shorter than its row, or when memory runs out.
  std::optional<FrameView> Complete(const FrameView& frame, int32_t width, int32_t height);

 private:
  NothrowList<uint8_t> m_u;
  NothrowList<uint8_t> m_v;
};
