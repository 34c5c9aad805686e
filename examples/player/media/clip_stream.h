// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <memory>
#include <string>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

struct AvDeleter {
  void operator()(AVFormatContext* format) const { avformat_close_input(&format); }
  void operator()(AVCodecContext* decoder) const { avcodec_free_context(&decoder); }
  void operator()(AVFrame* frame) const { av_frame_free(&frame); }
  void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};
using UniqueAvFrame = std::unique_ptr<AVFrame, AvDeleter>;

/// The best stream of one kind in a file, decoded. A file is opened once for its pictures and once for its
/// sound, so that neither waits for the other.
class ClipStream {
 public:
  /// Throws MediaError with the file's name.
  ClipStream(std::string path, AVMediaType kind, int threads);

  /// The next frame; false at the end, also where the file breaks off. See FrameSource::Next.
  bool Read(AVFrame& frame, double wanted, bool exact);
  /// Makes a frame the next one that is shown at the time or before it. A file that has become unreadable is
  /// at its end then, and damaged.
  void Seek(double seconds);

  /// Of the frame read last, in seconds from the start of the clip.
  double Time() const { return m_time; }
  double FrameDuration() const { return m_frameDuration; }
  /// How far the file was read, in seconds: also what was left out.
  double ReadUpTo() const { return std::max(m_readUpTo, m_nextTime); }
  double FramesPerSecond() const;
  double Duration() const;
  double PixelAspect() const;
  bool FileHasSound() const;
  /// How many pieces could not be decoded.
  int Damages() const { return m_damages; }

  const AVFormatContext& Format() const { return *m_format; }
  const AVStream& Stream() const { return *m_format->streams[m_index]; }
  const AVCodecContext& Decoder() const { return *m_decoder; }

 private:
  using UniqueFormat = std::unique_ptr<AVFormatContext, AvDeleter>;
  using UniqueDecoder = std::unique_ptr<AVCodecContext, AvDeleter>;

  void Open();
  UniqueDecoder OpenDecoder(const AVCodec& codec, const AVStream& stream) const;
  int Check(int result) const;
  bool Decode(AVFrame& frame);
  void Feed();
  bool IsToBeLeftOut(const AVPacket& packet);
  void TakeTime(const AVFrame& frame);
  bool JumpTo(double seconds);

  std::string m_path;
  AVMediaType m_kind;
  int m_threads;
  UniqueFormat m_format;
  UniqueDecoder m_decoder;
  std::unique_ptr<AVPacket, AvDeleter> m_packet;
  UniqueAvFrame m_afterJump;  ///< read while seeking, and not handed out yet
  bool m_hasAfterJump = false;
  bool m_isGone = false;  ///< could not be opened again
  int m_index = 0;
  double m_start = 0;         ///< the container's time of the clip's start
  double m_tick = 0;          ///< seconds per unit of the stream's times
  bool m_counts = false;      ///< the container has no times: frames are counted
  bool m_lacksTimes = false;  ///< the container has none for some frames
  bool m_hasTime = true;      ///< false after a jump until a frame tells its time
  double m_time = 0;
  double m_frameDuration = 0;
  double m_nextTime = 0;
  double m_readUpTo = 0;
  double m_wanted = 0;
  bool m_exact = true;
  bool m_keysOnly = false;
  int m_packetsBeforeKey = 0;  ///< how many may be left out while waiting for a key frame
  bool m_mayBeCut = false;     ///< the next packet: a jump in a stream of bytes may end inside of one
  int m_errors = 0;            ///< of reading, in a row
  int m_damages = 0;
};
