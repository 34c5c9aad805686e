// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <span>

namespace libnivral {

/// Folds the eight bytes of the registry's "InstalledVersion" into one number: both halves, byte by byte as
/// signed values, are added into the same accumulator. 0.0.0.9 gives 9; 4.9 stored as 00 00 00 04 00 00 00 09
/// gives 13.
constexpr int32_t FoldInstalledVersion(std::span<const uint8_t, 8> bytes) {
  uint32_t folded = 0;
  for (size_t i = 0; i < 4; ++i) {
    const auto high = static_cast<int8_t>(bytes[i]);
    const auto low = static_cast<int8_t>(bytes[i + 4]);
    folded = (folded << 8) + static_cast<uint32_t>(high) + static_cast<uint32_t>(low);
  }
  return static_cast<int32_t>(folded);
}

/// Whether Direct3D 9 is unusable here (1) or not (0), from the registry and a trial device. Nothing when the
/// registry has no DirectX version: the caller keeps what it knew.
std::optional<uint32_t> ProbeDirect3D();

}  // namespace libnivral
