// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "colour/kernels.h"
#include "support/guarded_buffer.h"
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

/// A test that runs once per form.
class KernelTest : public testing::TestWithParam<const ColourKernels*> {
 protected:
  GuardedBuffer RandomBytes(size_t size) {
    GuardedBuffer bytes(size);
    for (uint8_t& byte : bytes)
      byte = static_cast<uint8_t>(m_random());
    return bytes;
  }
  int32_t Random(int32_t low, int32_t high) {
    return std::uniform_int_distribution<int32_t>(low, high)(m_random);
  }

 private:
  std::mt19937 m_random{20240229};
  UseKernels m_use{*GetParam()};
};

inline std::string KernelName(const testing::TestParamInfo<const ColourKernels*>& param) {
  return param.param->name;
}

#define INSTANTIATE_KERNEL_TEST(suite) \
  INSTANTIATE_TEST_SUITE_P(Each, suite, testing::ValuesIn(RunnableKernels()), KernelName)
