// SPDX-License-Identifier: MIT
#pragma once

#include "nivral/nivral.h"

/// PCM player on the wave-out device.
class CAudio {
 public:
  CAudio() = default;
  virtual ~CAudio() = default;
  CAudio(const CAudio&) = delete;
  CAudio& operator=(const CAudio&) = delete;

  void SetWaveFormat(const WAVEFORMATEX*, int32_t) {}
  void SetWriteWaveCB(void*, NivralWriteWaveCallback) {}
  bool Play() { return false; }
  void Pause(uint32_t) {}
  void SetVolume(uint32_t) {}
  void Stop() {}
};
