// SPDX-License-Identifier: MIT
#include "player/media/clip_stream.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "media_error.h"

namespace {

constexpr double kUsualFrameRate = 25;
constexpr double kRounding = 1e-4;  ///< seconds; containers round times

std::string TextOf(int error) {
  if (error == AVERROR_INVALIDDATA) return "damaged, cut off before its index, or not a recording";
  char text[AV_ERROR_MAX_STRING_SIZE] = "";
  av_strerror(error, text, sizeof(text));
  return text;
}

}  // namespace

ClipStream::ClipStream(std::string path, AVMediaType kind, int threads)
    : m_path(std::move(path)),
      m_kind(kind),
      m_threads(threads),
      m_packet(av_packet_alloc()),
      m_afterJump(av_frame_alloc()) {
  Open();
}

int ClipStream::Check(int result) const {
  if (result < 0) throw MediaError(m_path + ": " + TextOf(result));
  return result;
}

void ClipStream::Open() {
  av_log_set_level(AV_LOG_QUIET);  // what is wrong with a file is said once, by the player
  AVFormatContext* opened = nullptr;
  Check(avformat_open_input(&opened, m_path.c_str(), nullptr, nullptr));
  UniqueFormat format(opened);
  Check(avformat_find_stream_info(opened, nullptr));
  const AVCodec* codec = nullptr;
  const int index = av_find_best_stream(opened, m_kind, -1, -1, &codec, 0);
  const bool isVideo = m_kind == AVMEDIA_TYPE_VIDEO;
  if (index == AVERROR_STREAM_NOT_FOUND && isVideo) throw NoPictures(m_path + ": the file has no pictures");
  if (index == AVERROR_STREAM_NOT_FOUND) throw MediaError(m_path + ": the file has no sound");
  if (index < 0)
    throw MediaError(m_path + ": the format of its " + (isVideo ? "pictures" : "sound") +
                     " is not supported");
  for (unsigned i = 0; i < format->nb_streams; ++i)
    if (static_cast<int>(i) != index) format->streams[i]->discard = AVDISCARD_ALL;
  m_decoder = OpenDecoder(*codec, *format->streams[index]);
  m_format = std::move(format);
  m_index = index;
  m_start = opened->start_time == AV_NOPTS_VALUE ? 0 : static_cast<double>(opened->start_time) / AV_TIME_BASE;
  m_tick = av_q2d(Stream().time_base);
  m_counts = (opened->iformat->flags & AVFMT_NOTIMESTAMPS) != 0;
  m_nextTime = 0;
  m_hasTime = true;
  m_hasAfterJump = false;
  m_keysOnly = false;
}

ClipStream::UniqueDecoder ClipStream::OpenDecoder(const AVCodec& codec, const AVStream& stream) const {
  constexpr int64_t kMostPixels = 8192 * 8192;
  UniqueDecoder decoder(avcodec_alloc_context3(&codec));
  Check(avcodec_parameters_to_context(decoder.get(), stream.codecpar));
  decoder->pkt_timebase = stream.time_base;
  decoder->thread_count = m_threads;
  decoder->max_pixels = kMostPixels;
  Check(avcodec_open2(decoder.get(), &codec, nullptr));
  return decoder;
}

double ClipStream::FramesPerSecond() const {
  const AVRational rate = av_guess_frame_rate(m_format.get(), m_format->streams[m_index], nullptr);
  return rate.num > 0 && rate.den > 0 ? av_q2d(rate) : kUsualFrameRate;
}

double ClipStream::PixelAspect() const {
  const AVRational aspect = av_guess_sample_aspect_ratio(m_format.get(), m_format->streams[m_index], nullptr);
  return aspect.num > 0 && aspect.den > 0 ? av_q2d(aspect) : 1;
}

bool ClipStream::FileHasSound() const {
  return av_find_best_stream(m_format.get(), AVMEDIA_TYPE_AUDIO, -1, -1, nullptr, 0) >= 0;
}

double ClipStream::Duration() const {
  return m_format->duration > 0 ? static_cast<double>(m_format->duration) / AV_TIME_BASE : 0;
}

bool ClipStream::Read(AVFrame& frame, double wanted, bool exact) {
  m_wanted = wanted;
  m_exact = exact;
  if (m_isGone) return false;
  if (!m_hasAfterJump) return Decode(frame);
  m_hasAfterJump = false;
  av_frame_unref(&frame);
  av_frame_move_ref(&frame, m_afterJump.get());
  return true;
}

bool ClipStream::Decode(AVFrame& frame) {
  for (;;) {
    const int result = avcodec_receive_frame(m_decoder.get(), &frame);
    if (result == AVERROR_EOF) return false;
    if (result == 0) {
      TakeTime(frame);
      return true;
    }
    if (result != AVERROR(EAGAIN)) ++m_damages;
    Feed();
  }
}

/// Gives the decoder one more packet, or tells it that there are no more.
void ClipStream::Feed() {
  constexpr int kMostErrors = 100;  // in a row; a demuxer may find its way again behind a damaged place
  const int result = av_read_frame(m_format.get(), m_packet.get());
  if (result < 0 && result != AVERROR_EOF && ++m_errors < kMostErrors) {
    ++m_damages;
    return;
  }
  if (result < 0) {
    avcodec_send_packet(m_decoder.get(), nullptr);
    return;
  }
  m_errors = 0;
  if (m_packet->stream_index == m_index && !IsToBeLeftOut(*m_packet)) {
    if ((m_packet->flags & AV_PKT_FLAG_CORRUPT) != 0) ++m_damages;
    if (avcodec_send_packet(m_decoder.get(), m_packet.get()) < 0) ++m_damages;
  }
  av_packet_unref(m_packet.get());
}

/// Pictures before the first key frame after a jump cannot be decoded right. Of those that come too late, the
/// ones that no other needs are left out, and when that does not help, all up to the next key frame; but
/// where some have no time of their own, none, since those behind them are counted.
bool ClipStream::IsToBeLeftOut(const AVPacket& packet) {
  constexpr double kLate = 0.3;
  constexpr double kFarTooLate = 2;
  if (m_kind != AVMEDIA_TYPE_VIDEO) return false;
  if (std::exchange(m_mayBeCut, false)) return true;
  const bool isKey = (packet.flags & AV_PKT_FLAG_KEY) != 0;
  if (m_packetsBeforeKey > 0) {
    m_packetsBeforeKey = isKey ? 0 : m_packetsBeforeKey - 1;
    if (!isKey) return true;
  }
  const int64_t at = packet.pts != AV_NOPTS_VALUE ? packet.pts : packet.dts;
  m_lacksTimes = m_lacksTimes || at == AV_NOPTS_VALUE;
  m_decoder->skip_frame = AVDISCARD_DEFAULT;
  if (m_counts || m_lacksTimes) return false;
  m_readUpTo = static_cast<double>(at) * m_tick - m_start;
  const double late = m_exact ? 0 : m_wanted - m_readUpTo;
  if (late > kFarTooLate) m_keysOnly = true;
  if (isKey && late <= kFarTooLate) m_keysOnly = false;
  if (late > kLate) m_decoder->skip_frame = AVDISCARD_NONREF;
  return m_keysOnly && !isKey;
}

void ClipStream::TakeTime(const AVFrame& frame) {
  if (frame.decode_error_flags != 0 || (frame.flags & AV_FRAME_FLAG_CORRUPT) != 0) ++m_damages;
  const bool isKnown = !m_counts && frame.best_effort_timestamp != AV_NOPTS_VALUE;
  m_hasTime = m_hasTime || isKnown;
  m_time = isKnown ? static_cast<double>(frame.best_effort_timestamp) * m_tick - m_start : m_nextTime;
  if (m_kind == AVMEDIA_TYPE_AUDIO)
    m_frameDuration = frame.nb_samples / std::max(1.0, static_cast<double>(frame.sample_rate));
  else
    m_frameDuration =
        frame.pkt_duration > 0 ? static_cast<double>(frame.pkt_duration) * m_tick : 1 / FramesPerSecond();
  m_nextTime = m_time + m_frameDuration;
}

bool ClipStream::JumpTo(double seconds) {
  constexpr int kLongestWaitForKey = 300;
  const auto at = static_cast<int64_t>(std::floor((seconds + m_start) / m_tick));
  if (av_seek_frame(m_format.get(), m_index, at, AVSEEK_FLAG_BACKWARD) < 0) return false;
  avcodec_flush_buffers(m_decoder.get());
  m_packetsBeforeKey = kLongestWaitForKey;
  m_mayBeCut = (m_format->iformat->flags & AVFMT_TS_DISCONT) != 0;
  m_keysOnly = false;
  m_hasTime = false;
  m_wanted = seconds;
  m_exact = true;
  return true;
}

// Containers jump by the time of decoding, or to where they guess the time to be, so that what comes first
// may be too late: then from further before, and in the end from the start.
void ClipStream::Seek(double seconds) {
  m_hasAfterJump = false;
  m_isGone = false;
  for (const double before : {0.0, 1.0, 4.0, 16.0, 64.0}) {
    if (m_counts || seconds - before <= 0 || !JumpTo(seconds - before)) break;
    if (!Decode(*m_afterJump) || !m_hasTime || m_time > seconds + kRounding) continue;
    m_hasAfterJump = true;
    return;
  }
  m_packetsBeforeKey = 0;
  m_mayBeCut = false;
  try {
    Open();
  } catch (const MediaError&) {
    m_isGone = true;
    ++m_damages;
  }
}
