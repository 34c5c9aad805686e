// SPDX-License-Identifier: MIT
// Fixed-layout records that travel from the client's threads to the drawing thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <variant>

namespace libnivral {

constexpr int32_t kTextItemCount = 6;
constexpr int32_t kMaxBoxes = 12;
constexpr int32_t kMaxLandmarks = 68;

/// One line of on-screen text; nothing is drawn while the text is empty.
struct TextItem {
  char text[512];
  uint32_t anchor;  ///< 1: y counts upward from the bottom of the video
  uint32_t x;
  uint32_t y;
  uint32_t colour;  ///< COLORREF, 0x00BBGGRR
};
static_assert(sizeof(TextItem) == 528);

/// Driver assistance: boxes in video pixels.
struct AlgRecord {
  float left[kMaxBoxes];
  float top[kMaxBoxes];
  float right[kMaxBoxes];
  float bottom[kMaxBoxes];
  uint16_t classId[kMaxBoxes];
  uint16_t distance[kMaxBoxes];
  uint16_t third[kMaxBoxes];
  uint16_t fourth[kMaxBoxes];
  uint16_t count;
  uint16_t lineWidth;
};
static_assert(sizeof(AlgRecord) == 292);
static_assert(offsetof(AlgRecord, top) == 48 && offsetof(AlgRecord, right) == 96 &&
              offsetof(AlgRecord, bottom) == 144 && offsetof(AlgRecord, classId) == 192 &&
              offsetof(AlgRecord, distance) == 216 && offsetof(AlgRecord, third) == 240 &&
              offsetof(AlgRecord, fourth) == 264 && offsetof(AlgRecord, count) == 288 &&
              offsetof(AlgRecord, lineWidth) == 290);

/// Driver monitoring: landmarks and boxes in video pixels.
struct DsmRecord {
  uint16_t pointSize;
  uint16_t pointCount;
  float x[kMaxLandmarks];
  float y[kMaxLandmarks];
  int32_t boxCount;
  float left[kMaxBoxes];
  float top[kMaxBoxes];
  float right[kMaxBoxes];
  float bottom[kMaxBoxes];
};
static_assert(sizeof(DsmRecord) == 744);
static_assert(offsetof(DsmRecord, pointCount) == 2 && offsetof(DsmRecord, x) == 4 &&
              offsetof(DsmRecord, y) == 276 && offsetof(DsmRecord, boxCount) == 548 &&
              offsetof(DsmRecord, left) == 552 && offsetof(DsmRecord, top) == 600 &&
              offsetof(DsmRecord, right) == 648 && offsetof(DsmRecord, bottom) == 696);

/// A record of any kind, kept elsewhere.
using RecordView = std::variant<const AlgRecord*, const DsmRecord*>;

/// What is shown with one frame.
struct FrameRecords {
  std::optional<AlgRecord> alg;
  std::optional<DsmRecord> dsm;

  /// Calls `paint` with each record that is not burned into the frame.
  template <class Paint>
  void ForEachPainted(Paint&& paint) const {
    if (dsm) paint(RecordView(&*dsm));
  }
};

/// Four arrays of box edges, floats carried in 32-bit words.
struct EdgeArrays {
  const uint32_t* left;
  const uint32_t* top;
  const uint32_t* right;
  const uint32_t* bottom;
};

struct BoxValueArrays {
  const uint16_t* classId;
  const uint16_t* distance;
  const uint16_t* third;
  const uint16_t* fourth;
};

/// Copies `count` boxes into a zeroed record. False, leaving the record alone, when count is not 1 to 12 or
/// an array is missing.
bool BuildAlgRecord(AlgRecord& record, int32_t count, const EdgeArrays& edges, const BoxValueArrays& values,
                    uint16_t lineWidth);

/// The same for landmarks and face boxes. False when pointCount is not 0 to 68, boxCount is above 12, or an
/// array that is needed is missing. A negative boxCount is kept and means no boxes.
bool BuildDsmRecord(DsmRecord& record, int32_t pointCount, const uint32_t* x, const uint32_t* y,
                    int32_t boxCount, const EdgeArrays& edges, uint16_t pointSize);

}  // namespace libnivral
