// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>

/// Interleaved 16-bit samples. Used by one thread at a time.
class SoundSource {
 public:
  virtual ~SoundSource() = default;
  virtual uint16_t Channels() const = 0;
  virtual uint32_t SamplesPerSecond() const = 0;
  /// Seconds; 0: without end.
  virtual double Duration() const { return 0; }
  /// Fills all of it, with silence where there is no sound or the sound has ended.
  virtual void Read(std::span<int16_t> samples) = 0;
  virtual void Seek(double seconds) = 0;
};

/// The sound of a file. Throws MediaError with the file's name.
std::unique_ptr<SoundSource> OpenSound(const std::string& path);

/// An engine's hum without end.
std::unique_ptr<SoundSource> MakeEngineHum();
