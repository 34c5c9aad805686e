// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>

constexpr int32_t kDirectX9 = 9;

/// Folds the eight bytes of the registry's "InstalledVersion" into one number: both halves, byte by byte as
/// signed values, are added into the same accumulator. 0.0.0.9 gives 9; 4.9 stored as 00 00 00 04 00 00 00 09
/// gives 13.
int32_t FoldInstalledVersion(std::span<const uint8_t, 8> bytes);
