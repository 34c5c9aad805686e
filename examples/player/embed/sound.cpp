// SPDX-License-Identifier: MIT
#include "player/embed/sound.h"

#include <algorithm>
#include <stdexcept>

namespace {

constexpr uint32_t kBuffersPerSecond = 16;

WAVEFORMATEX FormatOf(const SoundSource& source) {
  WAVEFORMATEX format{};
  format.wFormatTag = WAVE_FORMAT_PCM;
  format.nChannels = source.Channels();
  format.nSamplesPerSec = source.SamplesPerSecond();
  format.wBitsPerSample = 16;
  format.nBlockAlign = static_cast<WORD>(format.nChannels * sizeof(int16_t));
  format.nAvgBytesPerSec = format.nSamplesPerSec * format.nBlockAlign;
  return format;
}

uint32_t BufferSize(const WAVEFORMATEX& format) {
  return format.nSamplesPerSec / kBuffersPerSecond * format.nBlockAlign;
}

}  // namespace

Sound::Sound(std::unique_ptr<SoundSource> source, PlayClock& clock, int volume)
    : m_source(std::move(source)), m_clock(clock), m_volume(volume) {
  const WAVEFORMATEX format = FormatOf(*m_source);
  if (!m_player.Open() || !m_player.OnWrite([this](uint8_t* buffer, int size) { return Fill(buffer, size); }))
    throw std::runtime_error("the library opened no player");
  m_player.SetFormat(format, BufferSize(format));
}

void Sound::Start(double position) {
  m_player.Stop();
  m_source->Seek(position);
  m_start = position;
  m_buffers = 0;
  m_volumeSet = false;
  m_player.Play();
}

void Sound::SetVolume(int volume) {
  m_volume = std::clamp(volume, 0, 100);
  m_volumeSet = false;
}

/// Always fills the whole buffer, since an empty answer means "ask again".
///
/// Two buffers are always queued, and one was just played: what is written now is heard after the other one.
int Sound::Fill(uint8_t* buffer, int size) {
  // The volume belongs to the open device, which exists at the latest when it wants samples.
  if (!m_volumeSet.exchange(true)) m_player.SetVolume(static_cast<uint16_t>(m_volume.load()));
  const WAVEFORMATEX format = FormatOf(*m_source);
  const double bufferSeconds = static_cast<double>(size) / format.nAvgBytesPerSec;
  m_clock.Follow(m_start + static_cast<double>(m_buffers - 1) * bufferSeconds);
  ++m_buffers;
  m_source->Read({reinterpret_cast<int16_t*>(buffer), static_cast<size_t>(size) / sizeof(int16_t)});
  return size;
}
