// SPDX-License-Identifier: MIT
// Every conversion, in every form that the processor can run, gives the bytes of the plain form and touches
// nothing outside its planes.
#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <random>

#include "colour/convert.h"
#include "colour/snapshot.h"
#include "support/guarded_buffer.h"
#include "support/kernel_forms.h"

namespace {

size_t Bytes(int32_t rows, int32_t stride, int32_t rowBytes) {
  return rows > 0 ? static_cast<size_t>((rows - 1) * stride + rowBytes) : 0;
}

/// Noise from one number of the input: whole planes would be more than the fuzzer can vary.
GuardedBuffer Filled(FuzzedDataProvider& data, size_t size) {
  GuardedBuffer buffer(size);
  std::minstd_rand random(data.ConsumeIntegral<uint16_t>());
  for (uint8_t& byte : buffer)
    byte = static_cast<uint8_t>(random() >> 8);
  return buffer;
}

struct Input {
  explicit Input(FuzzedDataProvider& data)
      : kind(data.ConsumeIntegralInRange(0, 6)),
        width(data.ConsumeIntegralInRange(0, 200)),
        height(data.ConsumeIntegralInRange(-9, 9)),
        rows(std::abs(height)),
        strideY(width + data.ConsumeIntegralInRange(0, 40)),
        strideU(width / 2 + data.ConsumeIntegralInRange(0, 20)),
        strideV(width / 2 + data.ConsumeIntegralInRange(0, 20)),
        pitch(width * 4 + data.ConsumeIntegralInRange(0, 9)),
        bgr(Filled(data, static_cast<size_t>(width * rows * 3))),
        y(Filled(data, Bytes(rows, strideY, width))),
        u(Filled(data, Bytes(rows / 2, strideU, width / 2))),
        v(Filled(data, Bytes(rows / 2, strideV, width / 2))) {}

  int32_t kind, width, height, rows, strideY, strideU, strideV, pitch;
  GuardedBuffer bgr, y, u, v;
};

/// One allocation for each destination, so that each has its own guard.
using Output = std::vector<GuardedBuffer>;

Output Convert(const Input& in) {
  Output out;
  const ConstFrameView planes{in.y.data(), in.strideY, in.u.data(), in.strideU, in.v.data(), in.strideV};
  if (in.kind < static_cast<int32_t>(kPixelFormatCount)) {
    out.emplace_back(Bytes(in.rows, in.pitch, in.width * 4));
    ConvertToPixels(static_cast<PixelFormat>(in.kind), out[0].data(), in.pitch, planes, in.width, in.height);
  } else if (in.kind == 4) {
    out.emplace_back(Bytes(in.rows, in.pitch, in.width * 2));
    ConvertTo422(out[0].data(), in.pitch, planes, in.width, in.height);
  } else if (in.kind == 5) {
    out.emplace_back(in.bgr.size());
    YuvToBottomUpBgr24(out[0].data(), planes, in.width, in.rows);
  } else {
    out.emplace_back(Bytes(in.rows / 2 * 2, in.strideY, in.width));
    out.emplace_back(Bytes(in.rows / 2, in.strideY / 2, in.width / 2));
    out.emplace_back(out[1].size());
    Rgb24ToYv12(out[0].data(), out[1].data(), out[2].data(), in.bgr.data(), in.width, in.rows, in.strideY);
  }
  return out;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
  FuzzedDataProvider data(bytes, size);
  const Input in(data);
  SetCpuMask(0);
  const Output want = Convert(in);
  for (const ColourKernels* kernels : RunnableKernels()) {
    const UseKernels use(*kernels);
    const Output got = Convert(in);
    for (size_t i = 0; i < want.size(); ++i)
      if (!std::equal(want[i].begin(), want[i].end(), got[i].begin())) __builtin_trap();
  }
  return 0;
}
