// SPDX-License-Identifier: MIT
#include "colour/convert.h"

#include <algorithm>

#include "colour/conversion_tables.h"

namespace libnivral {
namespace {

/// Rows of a plane in the order in which they are read.
struct RowReader {
  const uint8_t* first;
  ptrdiff_t step;

  const uint8_t* operator[](ptrdiff_t row) const { return first + row * step; }
};

RowReader Reader(const uint8_t* plane, ptrdiff_t stride, ptrdiff_t rows, bool flip) {
  return flip ? RowReader{plane + (rows - 1) * stride, -stride} : RowReader{plane, stride};
}

/// A picture of at least one block, seen through the flip that a negative height asks for.
struct Picture {
  Picture(const ConstFrameView& p, int64_t signedHeight)
      : height(signedHeight < 0 ? -signedHeight : signedHeight),
        y(Reader(p.y, p.strideY, height, signedHeight < 0)),
        u(Reader(p.u, p.strideU, height / 2, signedHeight < 0)),
        v(Reader(p.v, p.strideV, height / 2, signedHeight < 0)) {}

  ptrdiff_t height;
  RowReader y;
  RowReader u;
  RowReader v;
};

bool HasBlocks(int64_t width, int64_t height) {
  return width >= 2 && (height >= 2 || height <= -2);
}

bool CanConvert(const uint8_t* out, const ConstFrameView& p, int32_t width, int32_t height) {
  return out && p.y && p.u && p.v && HasBlocks(width, height);
}

}  // namespace

void ChooseKernels() {
  static_cast<void>(ActiveKernels());
}

void ConvertToPixels(PixelFormat format, uint8_t* out, ptrdiff_t pitch, const ConstFrameView& planes,
                     int32_t width, int32_t height) {
  if (!CanConvert(out, planes, width, height)) return;
  const YuvRowsKernel convert = ToPixels(ActiveKernels(), format);
  const Picture picture(planes, height);
  for (ptrdiff_t block = 0; block < picture.height / 2; ++block) {
    const ptrdiff_t row = block * 2;
    uint8_t* const first = out + row * pitch;
    convert(
        {{first, first + pitch}, {picture.y[row], picture.y[row + 1]}, picture.u[block], picture.v[block]},
        width, kConverterTables);
  }
}

void ConvertTo422(uint8_t* out, ptrdiff_t pitch, const ConstFrameView& planes, int32_t width,
                  int32_t height) {
  if (!CanConvert(out, planes, width, height)) return;
  const Yuv422RowKernel convert = ActiveKernels().yuv.to422;
  const Picture picture(planes, height);
  for (ptrdiff_t row = 0; row < picture.height; ++row) {
    const ptrdiff_t chromaRow = std::min(row / 2, picture.height / 2 - 1);
    convert(out + row * pitch, picture.y[row], picture.u[chromaRow], picture.v[chromaRow], width);
  }
}

void Yv12ToRgb24(uint8_t* rgb, int32_t strideRgb, const uint8_t* y, const uint8_t* u, const uint8_t* v,
                 int32_t strideY, int32_t strideUV, int32_t width, int32_t height) {
  ConvertToPixels(PixelFormat::Bgr24, rgb, ptrdiff_t{strideRgb} * 3, {y, strideY, u, strideUV, v, strideUV},
                  width, height);
}

void Yv12ToRgb565(uint8_t* rgb, int32_t strideRgb, const uint8_t* y, const uint8_t* u, const uint8_t* v,
                  int32_t strideY, int32_t strideUV, int32_t width, int32_t height) {
  ConvertToPixels(PixelFormat::Rgb565, rgb, ptrdiff_t{strideRgb} * 2, {y, strideY, u, strideUV, v, strideUV},
                  width, height);
}

void Yv12ToYuv422(uint8_t* packed, int32_t stridePixels, const uint8_t* y, const uint8_t* u, const uint8_t* v,
                  int32_t strideY, int32_t strideUV, int32_t width, int32_t height) {
  ConvertTo422(packed, ptrdiff_t{stridePixels} * 2, {y, strideY, u, strideUV, v, strideUV}, width, height);
}

void Rgb24ToYv12(uint8_t* y, uint8_t* u, uint8_t* v, const uint8_t* rgb, int32_t width, int32_t height,
                 int32_t strideY) {
  if (!y || !u || !v || !rgb || width < 2 || height < 2) return;
  const RgbRowsKernel convert = ActiveKernels().bgrToYuv;
  const ptrdiff_t pitch = ptrdiff_t{width} * 3;
  for (ptrdiff_t block = 0; block < height / 2; ++block) {
    const ptrdiff_t row = block * 2;
    uint8_t* const luma = y + row * strideY;
    const uint8_t* const upper = rgb + (height - 1 - row) * pitch;
    const ptrdiff_t chroma = block * (strideY / 2);
    convert({{luma, luma + strideY}, u + chroma, v + chroma, {upper, upper - pitch}}, width);
  }
}

}  // namespace libnivral
