// SPDX-License-Identifier: MIT
#include "backends/yuvdraw/yuv2rgb.h"

#include <memory>
#include <new>

#include "backends/yuvdraw/bmp_file.h"
#include "colour/snapshot.h"

namespace {

/// Sizes whose file length fits its 32-bit field.
bool IsPictureSize(uint32_t width, uint32_t height) {
  if (width == 0 || height == 0 || width > INT32_MAX || height > INT32_MAX) return false;
  return BmpRowBytes(width) <= (UINT32_MAX - kBmpHeaderBytes) / height;
}

}  // namespace

bool YUV2RGB::SaveFrame(const char* fileName, const ConstFrameView& frame, uint32_t width, uint32_t height) {
  if (!IsPictureSize(width, height) || !HoldsFrame(frame, width, height)) return false;
  const std::unique_ptr<uint8_t[]> bgr(new (std::nothrow) uint8_t[size_t{width} * height * 3]);
  if (!bgr) return false;
  ToBgr24(bgr.get(), frame, width, height);
  return WriteBmp(fileName, bgr.get(), width, height);
}

bool YUV2RGB::SaveBuffer(const char* fileName, const uint8_t* buffer, uint32_t width, uint32_t height) {
  if (!buffer || !IsPictureSize(width, height)) return false;
  const size_t luma = size_t{width} * height;
  const auto stride = static_cast<int32_t>(width);
  return SaveFrame(fileName,
                   {buffer, stride, buffer + luma, stride / 2, buffer + luma + luma / 2, stride / 2}, width,
                   height);
}

void YUV2RGB::ToBgr24(uint8_t* bgr, const ConstFrameView& frame, uint32_t width, uint32_t height) {
  YuvToBottomUpBgr24(bgr, frame, static_cast<int32_t>(width), static_cast<int32_t>(height));
}

bool YUV2RGB::WriteBmp(const char* fileName, const uint8_t* bgr, uint32_t width, uint32_t height) {
  WriteBmpFile(fileName, bgr, width, height);
  return false;
}
