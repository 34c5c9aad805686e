// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "colour/kernels.h"
#include "util/cpu.h"

using namespace libnivral;

/// Every form of the kernels that this processor can run.
inline std::vector<const ColourKernels*> RunnableKernels() {
  std::vector<const ColourKernels*> list;
  for (const ColourKernels* kernels : AllKernels())
    if ((kernels->features & ~DetectedCpuFeatures()) == 0) list.push_back(kernels);
  return list;
}

/// Makes the library use one form for a scope.
class UseKernels {
 public:
  explicit UseKernels(const ColourKernels& kernels) { SetCpuMask(kernels.features); }
  ~UseKernels() { SetCpuMask(~uint32_t{0}); }
  UseKernels(const UseKernels&) = delete;
  UseKernels& operator=(const UseKernels&) = delete;
};
