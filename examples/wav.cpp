// SPDX-License-Identifier: MIT
#include "wav.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <span>

#include "media_error.h"

namespace {

constexpr uint32_t kLongestSound = 256u << 20;

uint32_t LittleEndian(std::span<const uint8_t> bytes) {
  uint32_t value = 0;
  for (size_t i = bytes.size(); i > 0; --i)
    value = value << 8 | bytes[i - 1];
  return value;
}

template <size_t N>
std::array<uint8_t, N> Take(std::istream& stream) {
  std::array<uint8_t, N> bytes{};
  if (!stream.read(reinterpret_cast<char*>(bytes.data()), N)) throw MediaError("the WAV file ends too early");
  return bytes;
}

uint32_t Tag(const char (&name)[5]) {
  std::array<uint8_t, 4> bytes{};
  for (size_t i = 0; i < 4; ++i)
    bytes[i] = static_cast<uint8_t>(name[i]);
  return LittleEndian(bytes);
}

void ReadFormat(std::istream& stream, uint32_t size, PcmSound& sound) {
  if (size < 16) throw MediaError("the WAV file's format is damaged");
  const auto bytes = Take<16>(stream);
  const std::span<const uint8_t> fields(bytes);
  sound.channels = static_cast<uint16_t>(LittleEndian(fields.subspan(2, 2)));
  sound.samplesPerSecond = LittleEndian(fields.subspan(4, 4));
  sound.bitsPerSample = static_cast<uint16_t>(LittleEndian(fields.subspan(14, 2)));
  const bool pcm = LittleEndian(fields.first(2)) == 1;
  if (!pcm || (sound.bitsPerSample != 8 && sound.bitsPerSample != 16) || sound.channels < 1 ||
      sound.channels > 2 || sound.samplesPerSecond < 4000 || sound.samplesPerSecond > 192000)
    throw MediaError("the WAV file is not 8 or 16-bit PCM, mono or stereo");
  stream.ignore(size - 16 + size % 2);
}

void ReadData(std::istream& stream, uint32_t size, PcmSound& sound) {
  if (sound.channels == 0) throw MediaError("the WAV file has no format before its data");
  if (size > kLongestSound) throw MediaError("the WAV file is too long");
  // In steps, so that a lying size costs no memory.
  constexpr uint32_t kStep = 1u << 16;
  while (sound.data.size() < size) {
    const size_t done = sound.data.size();
    const size_t step = std::min<size_t>(kStep, size - done);
    sound.data.resize(done + step);
    if (!stream.read(reinterpret_cast<char*>(sound.data.data() + done), static_cast<std::streamsize>(step)))
      throw MediaError("the WAV file ends too early");
  }
}

}  // namespace

PcmSound ReadWav(std::istream& stream) {
  if (LittleEndian(Take<4>(stream)) != Tag("RIFF")) throw MediaError("not a WAV file");
  Take<4>(stream);
  if (LittleEndian(Take<4>(stream)) != Tag("WAVE")) throw MediaError("not a WAV file");
  PcmSound sound{};
  for (;;) {
    const uint32_t name = LittleEndian(Take<4>(stream));
    const uint32_t size = LittleEndian(Take<4>(stream));
    if (name == Tag("fmt ")) {
      ReadFormat(stream, size, sound);
    } else if (name == Tag("data")) {
      ReadData(stream, size, sound);
      return sound;
    } else {
      stream.ignore(static_cast<std::streamsize>(size) + size % 2);
    }
  }
}

PcmSound EngineHum() {
  PcmSound sound{1, 16, 8000, {}};
  constexpr int kSeconds = 10;
  const uint32_t samples = kSeconds * sound.samplesPerSecond;
  for (uint32_t i = 0; i < samples; ++i) {
    const double turn = 2 * std::numbers::pi * i / sound.samplesPerSecond;
    const double level =
        (std::sin(110 * turn) + 0.5 * std::sin(220 * turn)) * (0.8 + 0.2 * std::sin(0.5 * turn));
    const auto sample = static_cast<uint16_t>(static_cast<int16_t>(level * 5000));
    sound.data.push_back(static_cast<uint8_t>(sample & 255));
    sound.data.push_back(static_cast<uint8_t>(sample >> 8));
  }
  return sound;
}
