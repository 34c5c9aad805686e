// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "player/layout.h"
#include "player/overlay_switches.h"

/// What is laid over a pane's frames. Used on the drawing thread.
class Overlays {
 public:
  virtual ~Overlays() = default;
  /// Before every frame.
  virtual void SetTexts(void* handle, int64_t frame) = 0;
  virtual bool HasRecords() const { return false; }
  /// Before every new frame, while there are records: the one that belongs to it.
  virtual void SendRecord(void*, int64_t) {}
};

/// A name and a running time stamp.
std::unique_ptr<Overlays> MakeTexts(std::string name, double framesPerSecond,
                                    const OverlaySwitches& switches);

/// Texts, and boxes with class and distance around the vehicles of a road scene of this size.
std::unique_ptr<Overlays> MakeRoadOverlays(std::string name, PixelSize size, const OverlaySwitches& switches);

/// Texts, and landmarks and box of a driver scene's face.
std::unique_ptr<Overlays> MakeDriverOverlays(std::string name, PixelSize size,
                                             const OverlaySwitches& switches);
