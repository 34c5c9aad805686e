// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace libnivral {

/// The 18 bytes of the system's WAVEFORMATEX.
#pragma pack(push, 1)
struct WaveFormat {
  uint16_t tag = 0;
  uint16_t channels = 0;
  uint32_t samplesPerSecond = 0;
  uint32_t averageBytesPerSecond = 0;
  uint16_t blockAlign = 0;
  uint16_t bitsPerSample = 0;
  uint16_t extraBytes = 0;
};
#pragma pack(pop)
static_assert(sizeof(WaveFormat) == 18);

constexpr uint16_t kPcmTag = 1;
constexpr uint16_t kMuLawTag = 7;

/// A format with the buffer sizes that go with it, in bytes per buffer.
struct FormatPreset {
  WaveFormat format;
  int32_t playBytes;
  int32_t captureBytes;
};

constexpr WaveFormat kTelephonyPcm{kPcmTag, 1, 8000, 16000, 2, 16, 0};
constexpr WaveFormat kCaptureFormat = kTelephonyPcm;

constexpr FormatPreset kNarrowBandPreset{kTelephonyPcm, 4050, 4050};
/// Announces 22 extra bytes that the structure does not carry; devices accept it.
constexpr FormatPreset kWideBandStereoPreset{{kPcmTag, 2, 48000, 48000 * 2 * 2, 2 * 2, 16, 22}, 9216, 9216};
constexpr FormatPreset kTelephonyPreset{kTelephonyPcm, 1280, 160};
constexpr FormatPreset kMuLawPreset{{kMuLawTag, 1, 8000, 8000, 1, 8, 0}, 508, 508};

/// Device volume for a percentage: the level of the left channel in the low word, the same for the right one
/// in the high word. 100 is full volume; above it the arithmetic wraps in 32 bits.
constexpr uint32_t DeviceVolume(uint32_t percent) {
  const uint32_t level = percent * 65535u / 100u;
  return level | (level << 16);
}

}  // namespace libnivral
