// SPDX-License-Identifier: MIT
#include "colour/kernels.h"

#include <iterator>

#include "util/cpu.h"

namespace {

ColourKernels WithAvx512() {
  ColourKernels kernels = kAvx2Kernels;
  kernels.name = "avx512";
  kernels.features |= kCpuAvx512;
  static_cast<YuvKernels&>(kernels) = kAvx512YuvKernels;
  return kernels;
}

const ColourKernels kAvx512Kernels = WithAvx512();
constexpr const ColourKernels* kAll[] = {&kScalarKernels, &kSsse3Kernels, &kAvx2Kernels, &kAvx512Kernels};

}  // namespace

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
