// SPDX-License-Identifier: MIT
#include "wav.h"

#include <gmock/gmock.h>

#include <sstream>

#include "media_error.h"

namespace {

std::string Number(uint32_t value, int bytes) {
  std::string text;
  for (int i = 0; i < bytes; ++i)
    text.push_back(static_cast<char>(value >> 8 * i & 255));
  return text;
}

std::string Chunk(const char* name, const std::string& body) {
  return name + Number(static_cast<uint32_t>(body.size()), 4) + body + std::string(body.size() % 2, '\0');
}

std::string Format(uint32_t tag, uint32_t channels, uint32_t rate, uint32_t bits) {
  const uint32_t align = channels * bits / 8;
  return Chunk("fmt ", Number(tag, 2) + Number(channels, 2) + Number(rate, 4) + Number(rate * align, 4) +
                           Number(align, 2) + Number(bits, 2));
}

std::string File(const std::string& chunks) {
  return "RIFF" + Number(static_cast<uint32_t>(chunks.size() + 4), 4) + "WAVE" + chunks;
}

PcmSound Read(const std::string& bytes) {
  std::istringstream stream(bytes);
  return ReadWav(stream);
}

TEST(Wav, ReadsPcmPastOtherChunks) {
  const PcmSound sound =
      Read(File(Chunk("LIST", "odd") + Format(1, 2, 44100, 16) + Chunk("data", "12345678")));
  EXPECT_EQ(sound.channels, 2);
  EXPECT_EQ(sound.samplesPerSecond, 44100u);
  EXPECT_EQ(sound.bitsPerSample, 16);
  EXPECT_EQ(std::string(sound.data.begin(), sound.data.end()), "12345678");
}

TEST(Wav, RefusesWhatItCannotPlay) {
  const std::string data = Chunk("data", "1234");
  for (const std::string& chunks :
       {Format(3, 1, 8000, 16) + data, Format(1, 0, 8000, 16) + data, Format(1, 1, 8000, 24) + data,
        Format(1, 1, 0, 16) + data, data, Chunk("fmt ", "short") + data, Format(1, 1, 8000, 8),
        Format(1, 1, 8000, 8) + "data" + Number(0xFFFFFFFF, 4),
        Format(1, 1, 8000, 8) + "data" + Number(99, 4)})
    EXPECT_THROW(Read(File(chunks)), MediaError);
  EXPECT_THROW(Read("RIFX"), MediaError);
}

TEST(Wav, EveryTruncationIsAnError) {
  const std::string whole = File(Format(1, 1, 8000, 8) + Chunk("data", "1234"));
  for (size_t length = 0; length < whole.size(); ++length)
    EXPECT_THROW(Read(whole.substr(0, length)), MediaError) << length;
  EXPECT_NO_THROW(Read(whole));
}

}  // namespace
