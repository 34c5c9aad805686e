// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>

#include "wav.h"

/// Plays PCM through the library while it exists.
class Sound {
 public:
  Sound(PcmSound sound, bool loop, int volume);
  ~Sound();
  Sound(const Sound&) = delete;
  Sound& operator=(const Sound&) = delete;

  void Pause(bool pause);
  void Restart() { m_position = 0; }
  /// Percent.
  void SetVolume(int volume);
  int Volume() const { return m_volume; }

 private:
  static int __cdecl FillBuffer(uint8_t* buffer, int size, void* user);
  int Fill(uint8_t* buffer, size_t size);

  PcmSound m_sound;
  bool m_loop;
  std::atomic<int> m_volume;
  std::atomic<bool> m_volumeSet{false};
  std::atomic<size_t> m_position{0};
  void* m_wave = nullptr;
};
