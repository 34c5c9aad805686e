// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <mmsystem.h>

#include <dsound.h>

#include <cstdint>
#include <span>

namespace libnivral {

/// Bytes of a looping sound buffer, locked for a scope: a second part follows where they wrap.
class SoundBufferLock {
 public:
  /// A lost buffer is restored and locked once more.
  SoundBufferLock(IDirectSoundBuffer8& buffer, uint32_t offset, uint32_t bytes) : m_buffer(buffer) {
    m_result = Lock(offset, bytes);
    if (m_result != DSERR_BUFFERLOST) return;
    m_buffer.Restore();
    m_result = Lock(offset, bytes);
  }
  ~SoundBufferLock() {
    if (*this) m_buffer.Unlock(m_first, m_firstBytes, m_second, m_secondBytes);
  }
  SoundBufferLock(const SoundBufferLock&) = delete;
  SoundBufferLock& operator=(const SoundBufferLock&) = delete;

  explicit operator bool() const { return SUCCEEDED(m_result); }
  std::span<uint8_t> First() const { return {static_cast<uint8_t*>(m_first), m_firstBytes}; }
  std::span<uint8_t> Second() const { return {static_cast<uint8_t*>(m_second), m_secondBytes}; }

 private:
  HRESULT Lock(uint32_t offset, uint32_t bytes) {
    return m_buffer.Lock(offset, bytes, &m_first, &m_firstBytes, &m_second, &m_secondBytes, 0);
  }

  IDirectSoundBuffer8& m_buffer;
  HRESULT m_result;
  void* m_first = nullptr;
  DWORD m_firstBytes = 0;
  void* m_second = nullptr;
  DWORD m_secondBytes = 0;
};

}  // namespace libnivral
