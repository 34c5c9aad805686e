// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <mmsystem.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <new>

namespace libnivral {

/// A format for the system, which may read as many bytes behind the structure as its cbSize announces; ours
/// carry none, so zeros stand there.
class PaddedFormat {
 public:
  explicit PaddedFormat(const WAVEFORMATEX& format)
      : m_bytes(new (std::nothrow) uint8_t[sizeof(format) + format.cbSize]{}) {
    if (m_bytes) std::memcpy(m_bytes.get(), &format, sizeof(format));
  }
  /// Null when there is no memory.
  WAVEFORMATEX* get() { return reinterpret_cast<WAVEFORMATEX*>(m_bytes.get()); }

 private:
  std::unique_ptr<uint8_t[]> m_bytes;
};

}  // namespace libnivral
