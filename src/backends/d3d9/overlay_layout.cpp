// SPDX-License-Identifier: MIT
#include "backends/d3d9/overlay_layout.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "backends/d3d9/overlay_shapes.h"
#include "picture/pixel_rect.h"

namespace {

constexpr int32_t kCarClass = 2;
constexpr int32_t kLabelsPerHeight = 40;  ///< label font heights in a frame's height

/// Boxes may come with any numbers; coordinates this far out are as good as any further.
constexpr int32_t kFarOut = 1 << 20;

struct Box {
  float left;
  float top;
  float right;
  float bottom;
};

int32_t TruncEdge(float value) {
  return std::clamp(TruncToInt(value), -kFarOut, kFarOut);
}

/// Clamps a box to the frame, or nothing when it begins beyond it. Comparisons are such that a NaN does not
/// get through.
std::optional<Box> ClampToFrame(Box box, const FrameSize& frame) {
  const auto width = static_cast<float>(frame.width);
  const auto height = static_cast<float>(frame.height);
  if (box.left < 0) box.left = 0;
  if (box.top < 0) box.top = 0;
  if (!(box.top <= height) || !(box.left <= width)) return std::nullopt;
  if (!(box.right <= width)) box.right = width;
  if (!(box.bottom <= height)) box.bottom = height;
  return box;
}

/// Half the line thickness goes outside.
PixelRect Grow(const Box& box, int32_t thickness) {
  const int32_t half = thickness / 2;
  const auto grow = static_cast<float>(half);
  return {TruncEdge(box.left - grow), TruncEdge(box.top - grow), TruncEdge(box.right + grow),
          TruncEdge(box.bottom + grow)};
}

PixelRect RectAt(int32_t left, int32_t top, int32_t width, int32_t height) {
  return {left, top, left + width, top + height};
}

void LayOutTypeLabel(AlgBoxLayout& layout, const Box& box, uint16_t type, int32_t fontHeight) {
  LabelEntry& label = layout.typeLabel;
  CopyClassLabel(label.text, type);
  int32_t width = static_cast<int32_t>(static_cast<double>(std::strlen(label.text)) * fontHeight * 1.5 / 3.0);
  int32_t height = fontHeight;
  if (type == kCarClass) {
    height = height * 2 / 3;
  } else {
    width += 10;
  }
  const int32_t left = std::max(TruncEdge(box.left), 0);
  const int32_t top = std::max(TruncEdge(box.top - static_cast<float>(height) - 1.0f), 0);
  layout.typeBackground = RectAt(left, top, width, height);
  label.rect = layout.typeBackground;
  if (type == kCarClass) label.rect.top -= 5;
}

/// Below the box, or centred at its bottom when the box is large enough to hold it.
LabelEntry LayOutDistanceLabel(const Box& box, uint16_t decimetres, int32_t fontHeight) {
  LabelEntry label{};
  const int length =
      std::snprintf(label.text, sizeof(label.text), "%dm", static_cast<int>(std::ceil(decimetres / 10.0)));
  const int32_t width = length * 7 / 10 * fontHeight + 8;
  int32_t left = TruncEdge(box.left);
  int32_t top = TruncEdge(box.bottom + 2.0f);
  const float boxWidth = box.right - box.left;
  if (boxWidth > static_cast<float>(width) && box.bottom - box.top > static_cast<float>(3 * fontHeight)) {
    left += TruncEdge(boxWidth) / 2 - width / 2;
    top = TruncEdge(box.bottom - static_cast<float>(fontHeight));
  }
  label.rect = RectAt(std::max(left, 0), std::max(top, 0), width + 1, fontHeight);
  return label;
}

}  // namespace

std::optional<AlgBoxLayout> LayOutAlgBox(const AlgRecord& record, int32_t index, const FrameSize& frame) {
  const uint16_t type = record.classId[index];
  const uint16_t distance = record.distance[index];
  if (type == 0 && distance == 0) return std::nullopt;
  const std::optional<Box> box =
      ClampToFrame({record.left[index], record.top[index], record.right[index], record.bottom[index]}, frame);
  if (!box) return std::nullopt;

  const int32_t fontHeight = frame.height / kLabelsPerHeight;
  AlgBoxLayout layout{};
  layout.outline = Grow(*box, record.lineWidth);
  layout.labelColor = type == kPersonClass ? kAmber : kGreen;
  LayOutTypeLabel(layout, *box, type, fontHeight);
  if (distance > 0) layout.distanceLabel = LayOutDistanceLabel(*box, distance, fontHeight);
  return layout;
}

std::optional<PixelRect> LayOutDsmBox(const DsmRecord& record, int32_t index, const FrameSize& frame) {
  const std::optional<Box> box =
      ClampToFrame({record.left[index], record.top[index], record.right[index], record.bottom[index]}, frame);
  if (!box || box->right == 0 || box->bottom == 0) return std::nullopt;
  return Grow(*box, record.pointSize);
}
