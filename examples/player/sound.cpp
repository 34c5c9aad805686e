// SPDX-License-Identifier: MIT
#include "player/sound.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include "player/library.h"

namespace {

constexpr uint32_t kBuffersPerSecond = 12;

WAVEFORMATEX FormatOf(const PcmSound& sound) {
  WAVEFORMATEX format{};
  format.wFormatTag = WAVE_FORMAT_PCM;
  format.nChannels = sound.channels;
  format.nSamplesPerSec = sound.samplesPerSecond;
  format.wBitsPerSample = sound.bitsPerSample;
  format.nBlockAlign = static_cast<WORD>(sound.channels * sound.bitsPerSample / 8);
  format.nAvgBytesPerSec = sound.samplesPerSecond * format.nBlockAlign;
  return format;
}

}  // namespace

Sound::Sound(PcmSound sound, bool loop, int volume)
    : m_sound(std::move(sound)), m_loop(loop && !m_sound.data.empty()), m_volume(volume) {
  if (nivral.WVOpenWave(&m_wave) != 0) throw std::runtime_error("the library opened no player");
  const WAVEFORMATEX format = FormatOf(m_sound);
  const uint32_t size = m_sound.samplesPerSecond / kBuffersPerSecond * format.nBlockAlign;
  nivral.WVSetWaveFormat(m_wave, &format, size);
  nivral.WVSetWriteWaveCB(m_wave, this, &FillBuffer);
  nivral.WVPlayWave(m_wave);
}

Sound::~Sound() {
  nivral.WVStopWave(m_wave);
  nivral.WVCloseWave(m_wave);
}

void Sound::Pause(bool pause) {
  nivral.WVPauseWave(m_wave, pause);
}

void Sound::SetVolume(int volume) {
  m_volume = std::clamp(volume, 0, 100);
  m_volumeSet = false;
}

int __cdecl Sound::FillBuffer(uint8_t* buffer, int size, void* user) {
  return static_cast<Sound*>(user)->Fill(buffer, static_cast<size_t>(size));
}

/// Always fills the whole buffer: with silence after the end, since an empty answer means "ask again".
int Sound::Fill(uint8_t* buffer, size_t size) {
  // The volume belongs to the open device, which exists at the latest when it wants samples.
  if (!m_volumeSet.exchange(true)) nivral.WVSetVolume(m_wave, static_cast<uint16_t>(m_volume.load()));
  const size_t end = m_sound.data.size();
  size_t position = std::min(m_position.load(), end);
  size_t done = 0;
  while (done < size) {
    if (position == end && m_loop) position = 0;
    const size_t step = std::min(size - done, end - position);
    if (step == 0) break;
    std::memcpy(buffer + done, m_sound.data.data() + position, step);
    done += step;
    position += step;
  }
  m_position = position;
  std::memset(buffer + done, m_sound.bitsPerSample == 8 ? 128 : 0, size - done);
  return static_cast<int>(size);
}
