// SPDX-License-Identifier: MIT
#pragma once

#include "display/records.h"

using namespace libnivral;

/// A driver-assistance record of one box.
inline AlgRecord OneBox(float left, float top, float right, float bottom, uint16_t classId, uint16_t distance,
                        uint16_t lineWidth = 0) {
  AlgRecord record{};
  record.count = 1;
  record.left[0] = left;
  record.top[0] = top;
  record.right[0] = right;
  record.bottom[0] = bottom;
  record.classId[0] = classId;
  record.distance[0] = distance;
  record.lineWidth = lineWidth;
  return record;
}
