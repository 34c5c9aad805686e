// SPDX-License-Identifier: MIT
#include "colour/snapshot.h"

#include <algorithm>

#include "colour/conversion_tables.h"
#include "colour/kernels.h"

namespace libnivral {
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

}  // namespace libnivral
