// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>

#include "player/options.h"

/// What is laid over a pane's frames. Prepare runs on the drawing thread before every new frame.
class Overlays {
 public:
  virtual ~Overlays() = default;
  virtual void Prepare(void* handle, int64_t frame) = 0;
};

/// The channel's name and a running time stamp; empty texts while `enabled` is false, which any thread may
/// change.
std::unique_ptr<Overlays> MakeTexts(std::string channel, double framesPerSecond,
                                    const std::atomic<bool>& enabled);

/// Texts, and boxes with class and distance around the vehicles of the road scene.
std::unique_ptr<Overlays> MakeRoadOverlays(const Options& options, const std::atomic<bool>& enabled);

/// A text, and landmarks and box of the driver scene's face.
std::unique_ptr<Overlays> MakeDriverOverlays(int width, int height, const std::atomic<bool>& enabled);
