// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <mmsystem.h>

#include <cstdint>
#include <cstring>
#include <vector>

/// A format for the system, which may read as many bytes behind the structure as its cbSize announces; ours
/// carry none, so zeros stand there.
class PaddedFormat {
 public:
  explicit PaddedFormat(const WAVEFORMATEX& format) : m_bytes(sizeof(format) + format.cbSize) {
    std::memcpy(m_bytes.data(), &format, sizeof(format));
  }
  WAVEFORMATEX* get() { return reinterpret_cast<WAVEFORMATEX*>(m_bytes.data()); }

 private:
  std::vector<uint8_t> m_bytes;
};
