// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

#include "picture/frame_view.h"
#include "util/nothrow_list.h"

namespace libnivral {

/// Rounds frames up to even sizes, for consumers that share a chroma sample between four pixels: where the
/// client's planes have size / 2 chroma samples, they want (size + 1) / 2. The missing column and row repeat
/// the last ones; chroma without any samples becomes grey.
///
/// Both operations give the frame itself where nothing is missing, else planes that live until the next call.
/// Nothing for planes that do not hold a frame of the size, or when memory runs out.
class FramePadder {
 public:
  /// Chroma is rounded up, luma stays. Rows of the result go down in memory.
  std::optional<ConstFrameView> PadChroma(const ConstFrameView& frame, int32_t width, int32_t height);

  /// Luma is rounded up too.
  std::optional<ConstFrameView> PadAll(const ConstFrameView& frame, int32_t width, int32_t height);

 private:
  NothrowList<uint8_t> m_y;
  NothrowList<uint8_t> m_u;
  NothrowList<uint8_t> m_v;
};

}  // namespace libnivral
