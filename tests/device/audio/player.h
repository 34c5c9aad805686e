// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstdint>
#include <cstring>

#include "nivral/nivral.h"
#include "support/wait.h"

constexpr WAVEFORMATEX kPcm8k{WAVE_FORMAT_PCM, 1, 8000, 16000, 2, 16, 0};
constexpr uint32_t kBufferBytes = 1280;

/// A player opened through the exports, with a callback that answers as told.
class Player {
 public:
  Player() {
    NIVRAL_WVOpenWave(&handle);
    NIVRAL_WVSetWriteWaveCB(handle, this, &Player::Pull);
  }
  ~Player() { NIVRAL_WVCloseWave(handle); }
  Player(const Player&) = delete;
  Player& operator=(const Player&) = delete;

  void Start(const WAVEFORMATEX& format = kPcm8k, uint32_t bufferBytes = kBufferBytes) {
    NIVRAL_WVSetWaveFormat(handle, &format, bufferBytes);
    NIVRAL_WVPlayWave(handle);
  }

  void* handle = nullptr;
  /// Bytes to report per call; -1 the whole buffer.
  std::atomic<int> answer{-1};
  /// What the client writes.
  std::atomic<uint8_t> level{0x11};
  std::atomic<int> asked{0};

  static int NIVRAL_CALL Pull(uint8_t* buffer, int size, void* user) {
    auto& self = *static_cast<Player*>(user);
    ++self.asked;
    const int count = self.answer < 0 ? size : self.answer.load();
    std::memset(buffer, self.level, static_cast<size_t>(count < size ? count : size));
    return count;
  }
};

/// Milliseconds that NIVRAL_WVStopWave takes.
inline ULONGLONG TimeStop(void* handle) {
  const ULONGLONG start = GetTickCount64();
  NIVRAL_WVStopWave(handle);
  return GetTickCount64() - start;
}

/// A buffer that plays for ten seconds, and what a Stop may take on a busy machine: far from the former,
/// since Stop waits for the callback and not for what is queued.
constexpr uint32_t kLongBufferBytes = 160000;
constexpr ULONGLONG kStopLimitMs = 5000;
