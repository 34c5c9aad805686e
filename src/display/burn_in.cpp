// SPDX-License-Identifier: MIT
#include "display/burn_in.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "display/class_label.h"
#include "display/geometry.h"

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

  void LabelArea(int64_t x, int64_t y, size_t characters) const {
    x = std::max<int64_t>(x, 0);
    y = std::max<int64_t>(y, 0);
    draw.FillRect(0, width, height, frame.y, frame.strideY, frame.u, frame.v, 0, PackPoint(x, y),
                  PackPoint(x + kCharacterWidth * static_cast<int64_t>(characters), y + kLabelHeight));
  }
};

bool Holds(const FrameView& frame, uint32_t width, uint32_t height) {
  const int64_t row = width;
  return width <= UINT16_MAX && height <= UINT16_MAX && frame.strideY >= row && frame.strideU >= row / 2 &&
         frame.strideV >= row / 2;
}

void DrawClassLabel(const Target& target, const Box& box, uint16_t classId) {
  char label[kClassLabelBytes];
  CopyClassLabel(label, classId);
  target.LabelArea(box.left, box.top - kClassLabelRise, std::strlen(label));
}

void DrawDistanceLabel(const Target& target, const Box& box, uint16_t metres) {
  char text[16];
  const auto characters = static_cast<size_t>(std::snprintf(text, sizeof(text), "%dm", metres));
  const int64_t textWidth = kCharacterWidth * static_cast<int64_t>(characters);
  const int64_t boxWidth = box.right - box.left;
  int64_t x = box.left;
  int64_t y = box.bottom + kDistanceLabelDrop;
  if (boxWidth > textWidth && box.bottom - box.top > kMinHeightForInside) {
    x = box.left + boxWidth / 2 - textWidth / 2;
    y = box.bottom - kLabelHeight;
  }
  if (box.top <= int64_t{target.height} && box.left <= int64_t{target.width})
    target.LabelArea(x, y, characters);
}

}  // namespace

void BurnInAlgRecord(CYuvDraw& draw, const AlgRecord& record, const FrameView& frame, uint32_t width,
                     uint32_t height) {
  if (!Holds(frame, width, height)) return;
  const Target target{draw, frame, width, height};
  const int32_t count = std::min<int32_t>(record.count, kMaxBoxes);
  for (int32_t i = 0; i < count; ++i) {
    const Box box{TruncToInt(std::max(record.left[i], 0.0f)), TruncToInt(std::max(record.top[i], 0.0f)),
                  TruncToInt(std::min(record.right[i], static_cast<float>(width))),
                  TruncToInt(std::min(record.bottom[i], static_cast<float>(height)))};
    target.Outline(box);
    if (record.classId[i] > 0) DrawClassLabel(target, box, record.classId[i]);
    if (record.distance[i] > 0) DrawDistanceLabel(target, box, record.distance[i]);
  }
}
