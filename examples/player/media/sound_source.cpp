// SPDX-License-Identifier: MIT
#include "player/media/sound_source.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "player/media/clip_stream.h"

extern "C" {
#include <libswresample/swresample.h>
}

namespace {

struct ResamplerDeleter {
  void operator()(SwrContext* resampler) const { swr_free(&resampler); }
};

/// Samples come out at the times that the file gives them: gaps are filled, what is late is cut. Times behind
/// the file's end, which some AVI files have, are not believed.
class FileSound : public SoundSource {
 public:
  explicit FileSound(const std::string& path)
      : m_stream(path, AVMEDIA_TYPE_AUDIO, 1),
        m_channels(static_cast<uint16_t>(std::clamp(m_stream.Decoder().ch_layout.nb_channels, 1, 2))),
        m_samplesPerSecond(static_cast<uint32_t>(std::clamp(m_stream.Decoder().sample_rate, 4000, 192'000))),
        m_decoded(av_frame_alloc()),
        m_pcm(av_frame_alloc()),
        m_resampler(swr_alloc()) {}

  uint16_t Channels() const override { return m_channels; }
  uint32_t SamplesPerSecond() const override { return m_samplesPerSecond; }
  double Duration() const override { return m_stream.Duration(); }

  void Read(std::span<int16_t> samples) override {
    size_t done = 0;
    while (done < samples.size() && (m_at < m_ready.size() || Decode())) {
      const size_t step = std::min(samples.size() - done, m_ready.size() - m_at);
      std::copy_n(m_ready.begin() + static_cast<ptrdiff_t>(m_at), step,
                  samples.begin() + static_cast<ptrdiff_t>(done));
      done += step;
      m_at += step;
    }
    std::fill(samples.begin() + static_cast<ptrdiff_t>(done), samples.end(), int16_t{0});
  }

  void Seek(double seconds) override {
    constexpr double kRunIn = 0.1;  // a decoder's first frame after a jump is not whole
    m_ready.clear();
    m_at = 0;
    m_readyUpTo = seconds;
    m_stream.Seek(std::max(0.0, seconds - kRunIn));
  }

 private:
  bool Decode();
  bool Resample();
  void Align(double time);

  ClipStream m_stream;
  uint16_t m_channels;
  uint32_t m_samplesPerSecond;
  UniqueAvFrame m_decoded;
  UniqueAvFrame m_pcm;
  std::unique_ptr<SwrContext, ResamplerDeleter> m_resampler;
  std::vector<int16_t> m_ready;
  size_t m_at = 0;
  double m_readyUpTo = 0;  ///< time of the sample after the last ready one
};

bool FileSound::Decode() {
  do {
    if (!m_stream.Read(*m_decoded, 0, true)) return false;
    m_ready.clear();
    m_at = 0;
    if (!Resample()) continue;
    const auto* samples = reinterpret_cast<const int16_t*>(m_pcm->data[0]);
    m_ready.assign(samples, samples + static_cast<size_t>(m_pcm->nb_samples) * m_channels);
    Align(m_stream.Time());
  } while (m_ready.empty());
  return true;
}

bool FileSound::Resample() {
  if (m_decoded->ch_layout.order == AV_CHANNEL_ORDER_UNSPEC)
    av_channel_layout_default(&m_decoded->ch_layout, m_decoded->ch_layout.nb_channels);
  av_frame_unref(m_pcm.get());
  av_channel_layout_default(&m_pcm->ch_layout, m_channels);
  m_pcm->sample_rate = static_cast<int>(m_samplesPerSecond);
  m_pcm->format = AV_SAMPLE_FMT_S16;
  if (swr_convert_frame(m_resampler.get(), m_pcm.get(), m_decoded.get()) == 0) return true;
  swr_close(m_resampler.get());  // the file's format has changed
  return swr_convert_frame(m_resampler.get(), m_pcm.get(), m_decoded.get()) == 0;
}

void FileSound::Align(double time) {
  constexpr double kNoMatter = 0.02;
  const bool isPlausible = Duration() == 0 || time <= Duration();
  const double gap = isPlausible ? time - m_readyUpTo : 0;
  const auto samples = static_cast<size_t>(std::fabs(gap) * m_samplesPerSecond) * m_channels;
  if (gap > kNoMatter)
    m_ready.insert(m_ready.begin(), samples, int16_t{0});
  else if (gap < -kNoMatter)
    m_ready.erase(m_ready.begin(),
                  m_ready.begin() + static_cast<ptrdiff_t>(std::min(samples, m_ready.size())));
  m_readyUpTo += static_cast<double>(m_ready.size() / m_channels) / m_samplesPerSecond;
}

}  // namespace

std::unique_ptr<SoundSource> OpenSound(const std::string& path) {
  return std::make_unique<FileSound>(path);
}
