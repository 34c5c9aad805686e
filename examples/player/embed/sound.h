// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <memory>
#include <nivral/nivral.hpp>

#include "player/media/play_clock.h"
#include "player/media/sound_source.h"

/// Plays sound through the library, and tells a clock what is heard.
class Sound {
 public:
  /// The clock outlives the sound.
  Sound(std::unique_ptr<SoundSource> source, PlayClock& clock, int volume);
  ~Sound() { Stop(); }

  void Start(double position);
  /// What was queued is dropped.
  void Stop() { m_player.Stop(); }
  /// Percent.
  void SetVolume(int volume);
  double Duration() const { return m_source->Duration(); }
  /// Whether the device has asked for samples since the start.
  bool IsHeard() const { return m_buffers > 0; }

 private:
  int Fill(uint8_t* buffer, int size);

  std::unique_ptr<SoundSource> m_source;
  PlayClock& m_clock;
  std::atomic<int> m_volume;
  std::atomic<bool> m_volumeSet{false};
  std::atomic<int64_t> m_buffers{0};  ///< handed out since the start
  double m_start = 0;
  nivral::WavePlayer m_player;  ///< the last member: it ends before what its callback uses
};
