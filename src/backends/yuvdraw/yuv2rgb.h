// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "picture/frame_view.h"

namespace libnivral {

/// Turns a 4:2:0 frame into a bottom-up 24-bit BMP file. Rows of widths that are not a multiple of 4 are
/// padded in the file, and an odd last column or row takes the chroma beside it.
class YUV2RGB {
 public:
  /// Snapshot from strided planes. Always false: clients look at the file, not at the result. There is no
  /// file afterwards when memory ran out, the planes do not hold the picture, or the disk is
  /// full.
  bool SaveFrame(const char* fileName, const ConstFrameView& frame, uint32_t width, uint32_t height);

  /// The same from one packed buffer: Y, then U at width * height, then V at width * height * 3 / 2, each
  /// chroma plane width * height / 4 bytes.
  bool SaveBuffer(const char* fileName, const uint8_t* buffer, uint32_t width, uint32_t height);

  /// Bottom-up rows of width * 3 bytes, blue first.
  static void ToBgr24(uint8_t* bgr, const ConstFrameView& frame, uint32_t width, uint32_t height);

 private:
  static bool WriteBmp(const char* fileName, const uint8_t* bgr, uint32_t width, uint32_t height);
};

/// Makes a bottom-up 24-bit picture (blue first, rows of width * 3 bytes without padding) of planes whose
/// chroma has half the width and half the height, rounded down. An odd last column or row takes the chroma
/// beside it; a picture one pixel wide or high has no chroma and becomes grey. Without a plane that has
/// samples nothing is written, nor for widths or heights below 1.
void YuvToBottomUpBgr24(uint8_t* bgr, const ConstFrameView& frame, int32_t width, int32_t height);

/// Bottom-up rows of width 16-bit pixels: red in 0xF800, green in 0x07E0, blue in 0x001F. Luma is taken as
/// full range. For even widths and heights; an odd last column or row is left alone.
void YuvToBottomUpRgb565(uint16_t* rgb, const FrameView& frame, uint32_t width, uint32_t height);

}  // namespace libnivral
