// SPDX-License-Identifier: MIT
// Any record on frames of any small size and stride: equal to the reference, nothing written outside.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "core/yuvdraw/burn_in_reference.h"
#include "display/burn_in.h"
#include "display/overlay_layout.h"
#include "support/frames.h"

namespace {

struct Input {
  uint8_t width;
  uint8_t height;
  uint8_t padY;
  uint8_t padUV;
  AlgRecord record;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Input input{};
  std::memcpy(&input, data, std::min(size, sizeof(input)));
  const int32_t width = input.width;
  const int32_t height = input.height;
  TestFrame frame(width, height, width + input.padY % 4, width / 2 + input.padUV % 4);
  frame.Fill(200, 120, 60);
  ReferencePlanes expected(input.width, input.height, frame.y, frame.u, frame.v);
  expected.Draw(input.record);
  CYuvDraw draw;
  OverlayList list;
  LayOutRecord(list, &input.record, {width, height, width, height}, BurnInStyle());
  BurnIn(draw, list, frame.View(), input.width, input.height);
  if (frame.y != expected.y || frame.u != expected.u || frame.v != expected.v) std::abort();
  return 0;
}
