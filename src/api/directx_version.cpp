// SPDX-License-Identifier: MIT
#include "api/directx_version.h"

int32_t FoldInstalledVersion(std::span<const uint8_t, 8> bytes) {
  uint32_t folded = 0;
  for (size_t i = 0; i < 4; ++i) {
    const auto high = static_cast<int8_t>(bytes[i]);
    const auto low = static_cast<int8_t>(bytes[i + 4]);
    folded = (folded << 8) + static_cast<uint32_t>(high) + static_cast<uint32_t>(low);
  }
  return static_cast<int32_t>(folded);
}
