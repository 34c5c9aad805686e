// SPDX-License-Identifier: MIT
// What the processor can do beyond the x86-64 baseline, for choosing between forms of one function.
#pragma once

#include <cstdint>

namespace libnivral {

constexpr uint32_t kCpuSsse3 = 1;
constexpr uint32_t kCpuAvx2 = 2;
/// The Ice Lake set: F, BW, VL and the byte permutations of VBMI.
constexpr uint32_t kCpuAvx512 = 4;

/// The features that the processor and the operating system support, whatever the mask says.
uint32_t DetectedCpuFeatures();

/// The features that may be used: the detected ones under the mask. The mask is the number in the environment
/// variable NIVRAL_CPU_MASK (decimal, or hexadecimal after 0x) as it was at the first call; all ones without
/// it. Any thread.
uint32_t CpuFeatures();

/// Replaces the mask for the whole process.
void SetCpuMask(uint32_t mask);

}  // namespace libnivral
