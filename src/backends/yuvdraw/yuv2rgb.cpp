// SPDX-License-Identifier: MIT
#include "backends/yuvdraw/yuv2rgb.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>

#include "backends/yuvdraw/bmp_file.h"
#include "colour/conversion_tables.h"
#include "colour/kernels.h"

namespace libnivral {
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

namespace {

constexpr uint8_t kNoColour = 128;

/// One pixel with its own chroma, through a block whose four samples are equal.
void ConvertPixel(uint8_t* bgr, uint8_t y, uint8_t u, uint8_t v) {
  const uint8_t luma[2] = {y, y};
  uint8_t block[2][6];
  kScalarKernels.yuv.toPixels.bgr24({{block[0], block[1]}, {luma, luma}, &u, &v}, 2, kSnapshotTables);
  std::copy_n(block[0], 3, bgr);
}

void ConvertGrey(uint8_t* bgr, const uint8_t* y, int32_t strideY, int32_t width, int32_t height) {
  for (ptrdiff_t row = 0; row < height; ++row) {
    uint8_t* out = bgr + (height - 1 - row) * width * 3;
    for (ptrdiff_t x = 0; x < width; ++x)
      ConvertPixel(out + x * 3, y[row * strideY + x], kNoColour, kNoColour);
  }
}

}  // namespace

void YuvToBottomUpBgr24(uint8_t* bgr, const ConstFrameView& frame, int32_t width, int32_t height) {
  if (!bgr || !frame.y || width < 1 || height < 1) return;
  if (width < 2 || height < 2) return ConvertGrey(bgr, frame.y, frame.strideY, width, height);
  if (!frame.u || !frame.v) return;
  const YuvRowsKernel convert = ActiveKernels().yuv.toPixels.bgr24;
  const ptrdiff_t pitch = ptrdiff_t{width} * 3;
  for (ptrdiff_t row = 0; row < height; row += 2) {
    // The last of an odd number of rows is its own neighbour.
    const ptrdiff_t next = std::min(row + 1, ptrdiff_t{height} - 1);
    const ptrdiff_t chroma = std::min(row / 2, ptrdiff_t{height} / 2 - 1);
    const YuvRows rows = {{bgr + (height - 1 - row) * pitch, bgr + (height - 1 - next) * pitch},
                          {frame.y + row * frame.strideY, frame.y + next * frame.strideY},
                          frame.u + chroma * frame.strideU,
                          frame.v + chroma * frame.strideV};
    convert(rows, width, kSnapshotTables);
    if (width % 2 == 0) continue;
    const ptrdiff_t last = width - 1;
    for (int i = 0; i < 2; ++i)
      ConvertPixel(rows.out[i] + last * 3, rows.y[i][last], rows.u[width / 2 - 1], rows.v[width / 2 - 1]);
  }
}

namespace {

constexpr int32_t kSamples = 256;

/// What chroma adds to luma, and where the sum, shifted up by kSamples, lands in a pixel.
struct Tables {
  int16_t redFromV[kSamples];
  int16_t greenFromV[kSamples];
  int16_t greenFromU[kSamples];
  int16_t blueFromU[kSamples];
  uint16_t red[3 * kSamples];
  uint16_t green[3 * kSamples];
  uint16_t blue[3 * kSamples];
};

constexpr int16_t Scale(double coefficient, int32_t sample) {
  return static_cast<int16_t>(coefficient * (sample - 128));
}

constexpr Tables MakeTables() {
  Tables t{};
  for (int32_t i = 0; i < kSamples; ++i) {
    t.redFromV[i] = Scale(1.4013377926421404, i);
    t.greenFromV[i] = Scale(-0.7136038186157518, i);
    t.greenFromU[i] = Scale(-0.34441087613293053, i);
    t.blueFromU[i] = Scale(1.7734138972809665, i);
  }
  for (int32_t i = 0; i < 3 * kSamples; ++i) {
    const int32_t value = std::clamp(i - kSamples, 0, 255);
    t.red[i] = static_cast<uint16_t>(value << 8 & 0xF800);
    t.green[i] = static_cast<uint16_t>(value << 3 & 0x07E0);
    t.blue[i] = static_cast<uint16_t>(value >> 3);
  }
  return t;
}

constexpr Tables kTables = MakeTables();

constexpr uint16_t ToPixel(int32_t y, uint8_t u, uint8_t v) {
  const int32_t luma = y + kSamples;
  return static_cast<uint16_t>(kTables.red[luma + kTables.redFromV[v]] |
                               kTables.green[luma + kTables.greenFromU[u] + kTables.greenFromV[v]] |
                               kTables.blue[luma + kTables.blueFromU[u]]);
}

}  // namespace

void YuvToBottomUpRgb565(uint16_t* rgb, const FrameView& frame, uint32_t width, uint32_t height) {
  for (ptrdiff_t row = 0; row < ptrdiff_t{height / 2 * 2}; ++row) {
    uint16_t* out = rgb + (ptrdiff_t{height} - 1 - row) * width;
    const uint8_t* y = frame.y + row * frame.strideY;
    const uint8_t* u = frame.u + row / 2 * frame.strideU;
    const uint8_t* v = frame.v + row / 2 * frame.strideV;
    for (ptrdiff_t x = 0; x < ptrdiff_t{width / 2 * 2}; ++x)
      out[x] = ToPixel(y[x], u[x / 2], v[x / 2]);
  }
}

}  // namespace libnivral
