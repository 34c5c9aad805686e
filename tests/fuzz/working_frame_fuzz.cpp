// SPDX-License-Identifier: MIT
// Frames of any layout under any settings: every form of the loops gives the planes of the plain form, and
// the client's planes are neither left nor written.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstdlib>
#include <cstring>
#include <numeric>
#include <random>

#include "display/working_frame.h"
#include "support/guarded_buffer.h"
#include "support/kernel_forms.h"

namespace {

/// Noise from one number of the input: whole planes would be more than the fuzzer can vary.
struct Plane {
  Plane(FuzzedDataProvider& data, uint32_t rows, int32_t stride)
      : step(static_cast<size_t>(std::abs(stride))), bytes(rows * step) {
    std::minstd_rand random(data.ConsumeIntegral<uint16_t>());
    for (uint8_t& byte : bytes)
      byte = static_cast<uint8_t>(random() >> 8);
    top = bytes.data() + (stride < 0 && rows > 0 ? (rows - 1) * step : 0);
  }
  uint32_t Sum() const { return std::accumulate(bytes.begin(), bytes.end(), 0u); }

  size_t step;
  GuardedBuffer bytes;
  uint8_t* top;
};

bool SameRows(const uint8_t* a, const uint8_t* b, int32_t stride, uint32_t width, uint32_t rows) {
  for (ptrdiff_t row = 0; row < rows; ++row) {
    if (std::memcmp(a + row * stride, b + row * stride, width) != 0) return false;
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
  FuzzedDataProvider data(bytes, size);
  const ColorValues colors{data.ConsumeIntegralInRange(-130, 130), data.ConsumeIntegralInRange(-103, 103),
                           data.ConsumeIntegralInRange(-103, 103), data.ConsumeIntegralInRange(-183, 183)};
  const auto mirror = data.ConsumeIntegralInRange<uint32_t>(0, 3);
  const auto width = data.ConsumeIntegralInRange<uint32_t>(0, 200);
  const auto height = data.ConsumeIntegralInRange<uint32_t>(0, 12);
  const int32_t strideY = data.ConsumeIntegralInRange(-210, 210);
  const int32_t strideU = data.ConsumeIntegralInRange(-140, 140);
  const int32_t strideV = data.ConsumeBool() ? strideU : data.ConsumeIntegralInRange(-140, 140);
  const Plane y(data, height, strideY), u(data, height / 2, strideU), v(data, height / 2, strideV);
  const FrameView client{y.top, strideY, u.top, strideU, v.top, strideV};
  const uint32_t before = y.Sum() + u.Sum() + v.Sum();

  static WorkingFrame plain;
  static WorkingFrame working;
  SetCpuMask(0);
  const FrameView want = plain.Prepare(client, width, height, mirror, colors);
  const bool held = HoldsFrame(client, width, height);
  if (held != (want.y != client.y)) __builtin_trap();
  for (const ColourKernels* kernels : RunnableKernels()) {
    const UseKernels use(*kernels);
    const FrameView got = working.Prepare(client, width, height, mirror, colors);
    if (held && !(SameRows(want.y, got.y, got.strideY, width, height) &&
                  SameRows(want.u, got.u, got.strideU, width / 2, height / 2) &&
                  SameRows(want.v, got.v, got.strideV, width / 2, height / 2)))
      __builtin_trap();
  }
  if (before != y.Sum() + u.Sum() + v.Sum()) __builtin_trap();
  return 0;
}
