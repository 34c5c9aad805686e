// SPDX-License-Identifier: MIT
#include "colour/kernels.h"

#include <iterator>

#include "util/cpu.h"

namespace libnivral {
namespace {

ColourKernels WithAvx512() {
  ColourKernels kernels = kAvx2Kernels;
  kernels.name = "avx512";
  kernels.features |= kCpuAvx512;
  kernels.yuv = kAvx512YuvKernels;
  kernels.copyRowsReversed = kAvx512CopyRowsReversed;
  return kernels;
}

const ColourKernels kAvx512Kernels = WithAvx512();
constexpr const ColourKernels* kAll[] = {&kScalarKernels, &kSsse3Kernels, &kAvx2Kernels, &kAvx512Kernels};

}  // namespace

YuvRowsKernel ToPixels(const ColourKernels& kernels, PixelFormat format) {
  const PixelKernels& to = kernels.yuv.toPixels;
  switch (format) {
    case PixelFormat::Bgr24:
      return to.bgr24;
    case PixelFormat::Bgrx32:
      return to.bgrx32;
    case PixelFormat::Rgb565:
      return to.rgb565;
    case PixelFormat::Rgb555:
      break;
  }
  return to.rgb555;
}

KernelList AllKernels() {
  return {kAll, std::size(kAll)};
}

const ColourKernels& ActiveKernels() {
  const uint32_t available = CpuFeatures();
  const ColourKernels* best = &kScalarKernels;
  for (const ColourKernels* kernels : AllKernels())
    if ((kernels->features & ~available) == 0) best = kernels;
  return *best;
}

}  // namespace libnivral
