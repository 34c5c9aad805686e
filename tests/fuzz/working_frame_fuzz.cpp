// SPDX-License-Identifier: MIT
// Frames of any layout under any settings: every form of the loops gives the planes of the plain form, and
// the client's planes are neither left nor written.
#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <random>

#include "display/working_frame.h"
#include "support/guarded_buffer.h"
#include "support/kernel_forms.h"

namespace {

using Plane = std::vector<uint8_t>;

/// Noise from one number of the input: whole planes would be more than the fuzzer can vary.
Plane Take(FuzzedDataProvider& data, uint32_t rows, int32_t stride) {
  Plane plane(stride > 0 ? size_t{rows} * static_cast<size_t>(stride) : 0);
  std::minstd_rand random(data.ConsumeIntegral<uint16_t>());
  for (uint8_t& byte : plane)
    byte = static_cast<uint8_t>(random() >> 8);
  return plane;
}

struct Client {
  explicit Client(const Plane& bytes) : plane(bytes.size()) {
    std::copy(bytes.begin(), bytes.end(), plane.begin());
  }
  GuardedBuffer plane;
};

bool Holds(const uint8_t* data, const Plane& want) {
  return std::equal(want.begin(), want.end(), data);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
  FuzzedDataProvider data(bytes, size);
  const ColorValues colors{data.ConsumeIntegralInRange(-130, 130), data.ConsumeIntegralInRange(-103, 103),
                           data.ConsumeIntegralInRange(-103, 103), data.ConsumeIntegralInRange(-183, 183)};
  const auto mirror = data.ConsumeIntegralInRange<uint32_t>(0, 3);
  const auto height = data.ConsumeIntegralInRange<uint32_t>(0, 12);
  const int32_t strideY = data.ConsumeIntegralInRange(-1, 200);
  const int32_t strideU = data.ConsumeIntegralInRange(-1, 140);
  const int32_t strideV = data.ConsumeBool() ? strideU : data.ConsumeIntegralInRange(-1, 140);
  const Plane y = Take(data, height, strideY);
  const Plane u = Take(data, height / 2, strideU);
  const Plane v = Take(data, height / 2, strideV);
  const Client clientY(y), clientU(u), clientV(v);
  const FrameView client{clientY.plane.data(), strideY, clientU.plane.data(), strideU,
                         clientV.plane.data(), strideV};

  static WorkingFrame plain;
  static WorkingFrame working;
  SetCpuMask(0);
  const FrameView want = plain.Prepare(client, height, mirror, colors);
  const Plane wantY(want.y, want.y + y.size()), wantU(want.u, want.u + u.size()),
      wantV(want.v, want.v + v.size());
  for (const ColourKernels* kernels : RunnableKernels()) {
    const UseKernels use(*kernels);
    const FrameView got = working.Prepare(client, height, mirror, colors);
    if (!Holds(got.y, wantY) || !Holds(got.u, wantU) || !Holds(got.v, wantV)) __builtin_trap();
  }
  if (!Holds(client.y, y) || !Holds(client.u, u) || !Holds(client.v, v)) __builtin_trap();
  return 0;
}
