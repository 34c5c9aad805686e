// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "display/frame_view.h"

/// Turns a 4:2:0 frame into a bottom-up 24-bit BMP file.
class YUV2RGB {
 public:
  /// Snapshot from strided planes. Always false: clients look at the file, not at the result.
  bool SaveFrame(const char* fileName, const FrameView& frame, uint32_t width, uint32_t height);

  /// Snapshot from one packed buffer: Y, then U at width * height, then V at width * height * 3 / 2.
  bool SaveBuffer(const char* fileName, const uint8_t* buffer, uint32_t width, uint32_t height);
};
