// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <istream>
#include <vector>

/// Interleaved PCM.
struct PcmSound {
  uint16_t channels;
  uint16_t bitsPerSample;
  uint32_t samplesPerSecond;
  std::vector<uint8_t> data;
};

/// Reads a RIFF WAVE file with 8 or 16-bit PCM. Throws MediaError.
PcmSound ReadWav(std::istream& stream);

/// Ten seconds of an engine's hum, 8 kHz 16-bit mono, whose end joins its beginning.
PcmSound EngineHum();
