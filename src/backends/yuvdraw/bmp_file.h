// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>

namespace libnivral {

constexpr uint32_t kBmpHeaderBytes = 54;

/// Bytes of one row in a 24-bit BMP file: padded to a multiple of 4.
constexpr uint64_t BmpRowBytes(uint32_t width) {
  return (uint64_t{width} * 3 + 3) & ~uint64_t{3};
}

/// File and information header of a bottom-up 24-bit BMP.
std::array<uint8_t, kBmpHeaderBytes> MakeBmpHeader(uint32_t width, uint32_t height);

/// Writes headers and rows of width * 3 bytes, which are padded in the file. A file that could not be written
/// whole is removed. Whether the file is complete.
bool WriteBmpFile(const char* fileName, const uint8_t* bgr, uint32_t width, uint32_t height);

}  // namespace libnivral
