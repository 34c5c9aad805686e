// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "picture.h"

/// Where a pane's frames come from. Used by one thread at a time.
class FrameSource {
 public:
  FrameSource(int width, int height) : m_picture(width, height) {}
  virtual ~FrameSource() = default;
  FrameSource(const FrameSource&) = delete;
  FrameSource& operator=(const FrameSource&) = delete;

  virtual double FramesPerSecond() const = 0;

  /// Makes the next frame the current one; false at the end of the clip. Throws MediaError.
  bool Next();
  /// Reads on up to a frame, or to the last one of a shorter clip.
  void Seek(int64_t frame);
  /// Starts again with the first frame.
  void Rewind();

  Picture& Current() { return m_picture; }
  int64_t Frame() const { return m_frame; }  ///< number of the current frame, -1 before the first

 private:
  virtual bool Read(int64_t frame, Picture& picture) = 0;
  virtual void Restart() {}

  Picture m_picture;
  int64_t m_frame = -1;
};

/// Checks the whole file, so that what opens also plays to its end. Throws MediaError with the file's name.
std::unique_ptr<FrameSource> OpenY4mFile(const std::string& path);
std::unique_ptr<FrameSource> MakeRoadSource(int width, int height);
std::unique_ptr<FrameSource> MakeDriverSource(int width, int height);
