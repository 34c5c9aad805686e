// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "player/media/frame.h"

/// What a pane's frames come from. Used by one thread at a time, except for the constant properties.
class FrameSource {
 public:
  FrameSource() = default;
  virtual ~FrameSource() = default;
  FrameSource(const FrameSource&) = delete;
  FrameSource& operator=(const FrameSource&) = delete;

  /// The next frame, or one without planes at the end. `wanted` is the time that is to be shown now: unless
  /// `exact`, the source leaves out frames that are far behind it, those first that no others need.
  virtual Frame Next(double wanted, bool exact) = 0;
  /// Goes to the frame that is shown at a time, or to one before it.
  virtual void Seek(double seconds) = 0;

  virtual double FramesPerSecond() const = 0;
  /// Seconds; 0: without end. What a file says of itself.
  virtual double Duration() const { return 0; }
  /// When the recording began, in seconds since 1970 in UTC; 0: not known.
  virtual int64_t RecordedAt() const { return 0; }
  /// What was wrong with the clip so far, as one line; empty when nothing was.
  virtual std::string Trouble() const { return {}; }
  virtual bool HasSound() const { return false; }
  /// Width for height of a pixel.
  virtual double PixelAspect() const { return 1; }
};

/// Throws MediaError with the file's name.
std::unique_ptr<FrameSource> OpenClip(const std::string& path, int threads);

/// Drawn scenes without end, from frame `first` on; frames are numbered as the scene numbers them.
std::unique_ptr<FrameSource> MakeRoadSource(int width, int height, int64_t first);
std::unique_ptr<FrameSource> MakeDriverSource(int width, int height, int64_t first);
