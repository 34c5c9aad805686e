// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <istream>
#include <string_view>

#include "picture.h"

struct Y4mFormat {
  int width;
  int height;
  double framesPerSecond;
};

/// Reads the first line of a Y4M file, without its line feed. 8-bit 4:2:0 only; an unknown frame rate becomes
/// 25. Throws MediaError.
Y4mFormat ParseY4mHeader(std::string_view line);

/// Reads frames from a stream of YUV4MPEG2, which outlives the reader. Throws MediaError.
class Y4mReader {
 public:
  explicit Y4mReader(std::istream& stream);

  const Y4mFormat& Format() const { return m_format; }

  /// Walks the whole clip without reading pictures, then goes back to the first frame. Throws MediaError when
  /// the clip is damaged or ends inside a frame.
  int64_t CountFrames();

  /// The next frame into a picture of the format's size; false at the end of the clip.
  bool Read(Picture& picture);
  /// Goes back to the first frame.
  void Rewind();

 private:
  bool ReadFrameHeader();

  std::istream& m_stream;
  Y4mFormat m_format;
  std::istream::pos_type m_firstFrame;
};
