// SPDX-License-Identifier: MIT
#include "backends/yuvdraw/yuv2rgb.h"

bool YUV2RGB::SaveFrame(const char*, const FrameView&, uint32_t, uint32_t) {
  return false;
}

bool YUV2RGB::SaveBuffer(const char*, const uint8_t*, uint32_t, uint32_t) {
  return false;
}
