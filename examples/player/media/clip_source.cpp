// SPDX-License-Identifier: MIT
// The pictures of a file as FFmpeg's libraries decode them.
#include <chrono>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <optional>

#include "player/media/clip_stream.h"
#include "player/media/frame_source.h"

extern "C" {
#include <libavutil/pixdesc.h>
#include <libswscale/swscale.h>
}

namespace {

struct ScalerDeleter {
  void operator()(SwsContext* scaler) const { sws_freeContext(scaler); }
};

/// 8-bit 4:2:0 of any frame.
class Converter {
 public:
  /// The frame itself where it is 4:2:0 of video range already. Null when it cannot be converted.
  UniqueAvFrame Convert(UniqueAvFrame frame) {
    const AVPixelFormat format = FormatOf(*frame);
    const bool fromTopToBottom = frame->linesize[0] > 0 && frame->linesize[1] > 0;
    if (format == AV_PIX_FMT_YUV420P && fromTopToBottom) return frame;
    m_scaler.reset(sws_getCachedContext(m_scaler.release(), frame->width, frame->height, format, frame->width,
                                        frame->height, AV_PIX_FMT_YUV420P, SWS_BILINEAR, nullptr, nullptr,
                                        nullptr));
    UniqueAvFrame converted(av_frame_alloc());
    converted->format = AV_PIX_FMT_YUV420P;
    converted->width = frame->width;
    converted->height = frame->height;
    if (!m_scaler || av_frame_get_buffer(converted.get(), 0) < 0) return nullptr;
    sws_scale(m_scaler.get(), frame->data, frame->linesize, 0, frame->height, converted->data,
              converted->linesize);
    return converted;
  }

 private:
  /// Full range may be said by the format or beside it.
  static AVPixelFormat FormatOf(const AVFrame& frame) {
    const bool isFull = frame.color_range == AVCOL_RANGE_JPEG && frame.format == AV_PIX_FMT_YUV420P;
    return isFull ? AV_PIX_FMT_YUVJ420P : static_cast<AVPixelFormat>(frame.format);
  }

  std::unique_ptr<SwsContext, ScalerDeleter> m_scaler;
};

class ClipSource : public FrameSource {
 public:
  ClipSource(const std::string& path, int threads)
      : m_stream(path, AVMEDIA_TYPE_VIDEO, threads),
        m_framesPerSecond(m_stream.FramesPerSecond()),
        m_duration(m_stream.Duration()),
        m_pixelAspect(m_stream.PixelAspect()),
        m_hasSound(m_stream.FileHasSound()),
        m_recordedAt(ReadRecordingTime()) {}

  Frame Next(double wanted, bool exact) override {
    for (;;) {
      UniqueAvFrame decoded(av_frame_alloc());
      if (!m_stream.Read(*decoded, wanted, exact)) {
        m_end = m_stream.ReadUpTo();
        return {};
      }
      if (UniqueAvFrame planes = m_converter.Convert(std::move(decoded))) return MakeFrame(std::move(planes));
    }
  }
  void Seek(double seconds) override { m_stream.Seek(seconds); }

  double FramesPerSecond() const override { return m_framesPerSecond; }
  double Duration() const override { return m_duration; }
  int64_t RecordedAt() const override { return m_recordedAt; }

  bool HasSound() const override { return m_hasSound; }
  double PixelAspect() const override { return m_pixelAspect; }

  std::string Trouble() const override {
    constexpr double kMuchShorter = 1;
    std::string text;
    if (m_stream.Damages() > 0) text = std::to_string(m_stream.Damages()) + " damaged places";
    if (m_end && *m_end < m_duration - kMuchShorter) {
      char place[64];
      std::snprintf(place, sizeof(place), "the pictures end at %.1f of %.1f seconds", *m_end, m_duration);
      text += (text.empty() ? "" : ", ") + std::string(place);
    }
    return text;
  }

 private:
  /// The one that is read first is the clip's first: what containers say of it is not always true.
  Frame MakeFrame(UniqueAvFrame planes) {
    const AVFrame& f = *planes;
    if (!m_first) m_first = m_stream.Time();
    Frame frame{f.data[0],
                f.data[1],
                f.data[2],
                static_cast<uint32_t>(f.linesize[0]),
                static_cast<uint32_t>(f.linesize[1]),
                f.width,
                f.height,
                m_stream.Time(),
                m_stream.FrameDuration(),
                std::llround((m_stream.Time() - *m_first) * m_framesPerSecond),
                nullptr};
    frame.owner = std::shared_ptr<const AVFrame>(planes.release(), AvDeleter());
    return frame;
  }

  int64_t ReadRecordingTime() const;

  ClipStream m_stream;
  Converter m_converter;
  double m_framesPerSecond;
  double m_duration;
  double m_pixelAspect;
  bool m_hasSound;
  int64_t m_recordedAt;
  std::optional<double> m_first;  ///< the first frame's time
  std::optional<double> m_end;    ///< the last frame's, once it was read
};

/// "2024-05-17T08:00:00.000000Z" in the container's or the stream's notes.
int64_t ClipSource::ReadRecordingTime() const {
  for (const AVDictionary* notes : {m_stream.Format().metadata, m_stream.Stream().metadata}) {
    const AVDictionaryEntry* entry = av_dict_get(notes, "creation_time", nullptr, 0);
    std::tm t{};
    if (!entry || std::sscanf(entry->value, "%d-%d-%dT%d:%d:%d", &t.tm_year, &t.tm_mon, &t.tm_mday,
                              &t.tm_hour, &t.tm_min, &t.tm_sec) != 6)
      continue;
    using namespace std::chrono;
    const sys_days day = year(t.tm_year) / t.tm_mon / t.tm_mday;
    const auto second = day + hours(t.tm_hour) + minutes(t.tm_min) + seconds(t.tm_sec);
    if (t.tm_year > 1970) return duration_cast<seconds>(second.time_since_epoch()).count();
  }
  return 0;
}

}  // namespace

std::unique_ptr<FrameSource> OpenClip(const std::string& path, int threads) {
  return std::make_unique<ClipSource>(path, threads);
}
