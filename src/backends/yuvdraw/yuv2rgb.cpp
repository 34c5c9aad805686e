// SPDX-License-Identifier: MIT
#include "backends/yuvdraw/yuv2rgb.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <new>

#include "backends/yuvdraw/bmp_file.h"

namespace {

/// Sizes whose file length fits its 32-bit field.
bool IsPictureSize(uint32_t width, uint32_t height) {
  if (width == 0 || height == 0 || width > INT32_MAX || height > INT32_MAX) return false;
  return BmpRowBytes(width) <= (UINT32_MAX - kBmpHeaderBytes) / height;
}

bool HoldsRow(const uint8_t* plane, int32_t stride, uint32_t bytes) {
  return plane && std::abs(int64_t{stride}) >= bytes;
}

uint8_t Clamp(int32_t fixed) {
  return static_cast<uint8_t>(std::clamp(fixed >> 16, 0, 255));
}

}  // namespace

bool YUV2RGB::SaveFrame(const char* fileName, const FrameView& frame, uint32_t width, uint32_t height) {
  if (!IsPictureSize(width, height) || !HoldsRow(frame.y, frame.strideY, width) ||
      !HoldsRow(frame.u, frame.strideU, width / 2) || !HoldsRow(frame.v, frame.strideV, width / 2)) {
    return false;
  }
  const std::unique_ptr<uint8_t[]> bgr(new (std::nothrow) uint8_t[size_t{width} * height * 3]);
  if (!bgr) return false;
  ToBgr24(bgr.get(), frame, width, height);
  return WriteBmp(fileName, bgr.get(), width, height);
}

bool YUV2RGB::SaveBuffer(const char* fileName, const uint8_t* buffer, uint32_t width, uint32_t height) {
  if (!buffer || !IsPictureSize(width, height)) return false;
  auto* y = const_cast<uint8_t*>(buffer);
  const size_t luma = size_t{width} * height;
  const auto stride = static_cast<int32_t>(width);
  return SaveFrame(fileName, {y, stride, y + luma, stride / 2, y + luma + luma / 2, stride / 2}, width,
                   height);
}

void YUV2RGB::ToBgr24(uint8_t* bgr, const FrameView& frame, uint32_t width, uint32_t height) {
  for (ptrdiff_t row = 0; row < ptrdiff_t{height}; ++row) {
    uint8_t* out = bgr + (ptrdiff_t{height} - 1 - row) * width * 3;
    const ptrdiff_t chromaRow = std::min<ptrdiff_t>(row / 2, height / 2 - 1);
    for (ptrdiff_t x = 0; x < ptrdiff_t{width}; ++x) {
      const ptrdiff_t column = std::min<ptrdiff_t>(x / 2, width / 2 - 1);
      const bool grey = chromaRow < 0 || column < 0;
      const int32_t u = grey ? 0 : frame.u[chromaRow * frame.strideU + column] - 128;
      const int32_t v = grey ? 0 : frame.v[chromaRow * frame.strideV + column] - 128;
      const int32_t y = (frame.y[row * frame.strideY + x] - 16) * 76309;
      *out++ = Clamp(y + u * 132201);
      *out++ = Clamp(y - u * 25675 - v * 53279);
      *out++ = Clamp(y + v * 104597);
    }
  }
}

bool YUV2RGB::WriteBmp(const char* fileName, const uint8_t* bgr, uint32_t width, uint32_t height) {
  WriteBmpFile(fileName, bgr, width, height);
  return false;
}
