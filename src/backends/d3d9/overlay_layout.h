// SPDX-License-Identifier: MIT
// Where the boxes and labels of algorithm records go, in frame pixels.
#pragma once

#include <cstdint>
#include <optional>

#include "display/class_label.h"
#include "display/records.h"
#include "picture/pixel_rect.h"

/// A class that gets its own colours.
constexpr uint16_t kPersonClass = 1;

struct FrameSize {
  int32_t width;
  int32_t height;
};

/// A line of text and the rectangle made for it; the text starts at the rectangle's top left corner.
struct LabelEntry {
  char text[kClassLabelBytes];
  PixelRect rect;
};

/// One result of driver assistance, ready to draw.
struct AlgBoxLayout {
  PixelRect outline;
  PixelRect typeBackground;
  LabelEntry typeLabel;
  uint32_t labelColor;
  /// Present when the distance is known; its rectangle is also the background.
  std::optional<LabelEntry> distanceLabel;
};

/// Nothing when the result has neither a type nor a distance or begins beyond the frame.
std::optional<AlgBoxLayout> LayOutAlgBox(const AlgRecord& record, int32_t index, const FrameSize& frame);

/// The outer brackets of a driver-monitoring box; nothing when it is beyond the frame or empty.
std::optional<PixelRect> LayOutDsmBox(const DsmRecord& record, int32_t index, const FrameSize& frame);
