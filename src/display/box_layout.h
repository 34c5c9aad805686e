// SPDX-License-Identifier: MIT
// What algorithm records look like on a display that shows the whole video: rectangles and labels, in pixels.
#pragma once

#include "display/class_label.h"
#include "display/overlay_types.h"
#include "display/records.h"

/// Label fonts are this many points; a label's background is as many pixels high.
constexpr int32_t kLabelFontSize = 12;

struct OverlayLabel {
  int32_t x;
  int32_t y;
  char text[kClassLabelBytes];
};

/// Rectangles up to `end` have this colour, from where the run before ended.
struct ColorRun {
  OverlayColor color;
  size_t end;
};

/// Drawing order: all rectangles, then class labels, then distance labels.
struct AlgLayout {
  RectList rects;
  NothrowList<ColorRun> runs;
  NothrowList<OverlayLabel> classLabels;
  NothrowList<OverlayLabel> distanceLabels;

  void Clear();
};

/// Boxes and labels of a driver-assistance record; distances are tenths of a metre. Without a font for the
/// labels, boxes only.
void LayoutAlgRecord(AlgLayout& layout, const AlgRecord& record, const DisplayMap& map, bool withLabels);

/// Landmarks, of which only every second is shown, and face boxes of a driver-monitoring record, all green.
/// Appends.
void LayoutDsmRecord(RectList& rects, const DsmRecord& record, const DisplayMap& map);
