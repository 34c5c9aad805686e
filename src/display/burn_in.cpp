// SPDX-License-Identifier: MIT
#include "display/burn_in.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "display/class_label.h"
#include "picture/pixel_rect.h"

namespace {

constexpr int64_t kCharacterWidth = 6;
constexpr int64_t kLabelHeight = 10;
constexpr int64_t kClassLabelRise = 11;    ///< above the box
constexpr int64_t kDistanceLabelDrop = 2;  ///< below the box
constexpr int64_t kMinHeightForInside = 30;

struct Box {
  int64_t left, top, right, bottom;
};

struct Target {
  CYuvDraw& draw;
  const FrameView& frame;
  uint32_t width;
  uint32_t height;

  void Outline(const Box& box) const {
    draw.DrawRect(0, width, height, frame.y, frame.strideY, frame.u, frame.v, 0, PackPoint(box.left, box.top),
                  PackPoint(box.right, box.bottom));
  }

  void LabelArea(const PixelRect& area) const {
    // The right column is part of what is filled, the bottom row is not.
    draw.FillRect(0, width, height, frame.y, frame.strideY, frame.u, frame.v, 0,
                  PackPoint(area.left, area.top), PackPoint(int64_t{area.right} - 1, area.bottom));
  }
};

bool Holds(const FrameView& frame, uint32_t width, uint32_t height) {
  const bool drawable = width <= UINT16_MAX && height <= UINT16_MAX && !ConstFrameView(frame).IsBottomUp();
  return drawable && HoldsFrame(frame, width, height);
}

Box ToBox(const AlgRecord& record, int32_t i, uint32_t width, uint32_t height) {
  return {TruncToInt(std::max(record.left[i], 0.0f)), TruncToInt(std::max(record.top[i], 0.0f)),
          TruncToInt(std::min(static_cast<float>(width), record.right[i])),
          TruncToInt(std::min(static_cast<float>(height), record.bottom[i]))};
}

/// The largest edge that a float makes is 128 below what 32 bits hold, so the far corner fits too.
PixelRect LabelAreaAt(int64_t x, int64_t y, size_t characters) {
  const auto left = static_cast<int32_t>(std::max<int64_t>(x, 0));
  const auto top = static_cast<int32_t>(std::max<int64_t>(y, 0));
  return {left, top, left + static_cast<int32_t>(kCharacterWidth * static_cast<int64_t>(characters)) + 1,
          top + static_cast<int32_t>(kLabelHeight)};
}

BurnInLabel ClassLabel(const Box& box, uint16_t classId) {
  BurnInLabel label;
  CopyClassLabel(label.text, classId);
  label.area = LabelAreaAt(box.left, box.top - kClassLabelRise, std::strlen(label.text));
  return label;
}

/// The area is as wide as the value as such takes, in whatever form the letters show it.
BurnInLabel DistanceLabel(const Box& box, uint16_t tenths) {
  BurnInLabel label;
  const auto characters = static_cast<size_t>(std::snprintf(label.text, sizeof(label.text), "%dm", tenths));
  const int64_t textWidth = kCharacterWidth * static_cast<int64_t>(characters);
  const int64_t boxWidth = box.right - box.left;
  int64_t x = box.left;
  int64_t y = box.bottom + kDistanceLabelDrop;
  if (boxWidth > textWidth && box.bottom - box.top > kMinHeightForInside) {
    x = box.left + boxWidth / 2 - textWidth / 2;
    y = box.bottom - kLabelHeight;
  }
  label.area = LabelAreaAt(x, y, characters);
  std::snprintf(label.text, sizeof(label.text), "%.1fm", tenths / 10.0);
  return label;
}

/// Calls `visit` with each label of a box.
template <class Visit>
void ForEachLabel(const AlgRecord& record, int32_t i, const Box& box, uint32_t width, uint32_t height,
                  const Visit& visit) {
  if (record.classId[i] > 0) visit(ClassLabel(box, record.classId[i]));
  if (record.distance[i] > 0 && box.top <= int64_t{height} && box.left <= int64_t{width})
    visit(DistanceLabel(box, record.distance[i]));
}

}  // namespace

void LayoutBurnInLabels(BurnInLabels& to, const AlgRecord& record, uint32_t width, uint32_t height) {
  to.count = 0;
  const PixelRect picture{0, 0, static_cast<int32_t>(width), static_cast<int32_t>(height)};
  const int32_t count = std::min<int32_t>(record.count, kMaxBoxes);
  for (int32_t i = 0; i < count; ++i) {
    ForEachLabel(record, i, ToBox(record, i, width, height), width, height, [&](const BurnInLabel& label) {
      if (!Intersect(label.area, picture).Empty()) to.labels[to.count++] = label;
    });
  }
}

void BurnInAlgRecord(CYuvDraw& draw, const AlgRecord& record, const FrameView& frame, uint32_t width,
                     uint32_t height) {
  if (!Holds(frame, width, height)) return;
  const Target target{draw, frame, width, height};
  const int32_t count = std::min<int32_t>(record.count, kMaxBoxes);
  for (int32_t i = 0; i < count; ++i) {
    const Box box = ToBox(record, i, width, height);
    target.Outline(box);
    ForEachLabel(record, i, box, width, height,
                 [&](const BurnInLabel& label) { target.LabelArea(label.area); });
  }
}
