// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstdint>
#include <cstring>

#include "nivral/nivral.h"

using namespace libnivral;

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
  void Stop() { NIVRAL_WVStopWave(handle); }

  static int NIVRAL_CALL Pull(uint8_t* buffer, int size, void* user) {
    auto& self = *static_cast<Player*>(user);
    self.thread = GetCurrentThreadId();
    ++self.asked;
    if (self.hasNothing) return 0;
    std::memset(buffer, self.level, static_cast<size_t>(size));
    return size;
  }

  void* handle = nullptr;
  std::atomic<bool> hasNothing{false};
  std::atomic<uint8_t> level{0x11};  ///< what the client writes
  std::atomic<int> asked{0};
  std::atomic<DWORD> thread{0};  ///< on which it was asked
};
