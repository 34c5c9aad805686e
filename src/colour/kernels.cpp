// SPDX-License-Identifier: MIT
#include "colour/kernels.h"

#include <iterator>

#include "util/cpu.h"

namespace {
constexpr const ColourKernels* kAll[] = {&kScalarKernels, &kSsse3Kernels, &kAvx2Kernels};
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
