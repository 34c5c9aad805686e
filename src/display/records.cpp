// SPDX-License-Identifier: MIT
#include "display/records.h"

#include <cstring>

namespace libnivral {
namespace {

template <class To, class From>
void CopyWords(To* to, const From* from, int32_t count) {
  static_assert(sizeof(To) == sizeof(From));
  if (count > 0) std::memcpy(to, from, static_cast<size_t>(count) * sizeof(To));
}

template <class Record>
void CopyEdges(Record& record, const EdgeArrays& edges, int32_t count) {
  CopyWords(record.left, edges.left, count);
  CopyWords(record.top, edges.top, count);
  CopyWords(record.right, edges.right, count);
  CopyWords(record.bottom, edges.bottom, count);
}

bool Complete(const EdgeArrays& edges) {
  return edges.left && edges.top && edges.right && edges.bottom;
}

bool Complete(const BoxValueArrays& values) {
  return values.classId && values.distance && values.third && values.fourth;
}

}  // namespace

bool BuildAlgRecord(AlgRecord& record, int32_t count, const EdgeArrays& edges, const BoxValueArrays& values,
                    uint16_t lineWidth) {
  if (count < 1 || count > kMaxBoxes || !Complete(edges) || !Complete(values)) return false;
  record = {};
  CopyEdges(record, edges, count);
  CopyWords(record.classId, values.classId, count);
  CopyWords(record.distance, values.distance, count);
  CopyWords(record.third, values.third, count);
  CopyWords(record.fourth, values.fourth, count);
  record.count = static_cast<uint16_t>(count);
  record.lineWidth = lineWidth;
  return true;
}

bool BuildDsmRecord(DsmRecord& record, int32_t pointCount, const uint32_t* x, const uint32_t* y,
                    int32_t boxCount, const EdgeArrays& edges, uint16_t pointSize) {
  if (pointCount < 0 || pointCount > kMaxLandmarks || boxCount > kMaxBoxes) return false;
  if ((pointCount > 0 && !(x && y)) || (boxCount > 0 && !Complete(edges))) return false;
  record = {};
  record.pointSize = pointSize;
  record.pointCount = static_cast<uint16_t>(pointCount);
  CopyWords(record.x, x, pointCount);
  CopyWords(record.y, y, pointCount);
  record.boxCount = boxCount;
  CopyEdges(record, edges, boxCount);
  return true;
}

}  // namespace libnivral
