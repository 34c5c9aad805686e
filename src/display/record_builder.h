// SPDX-License-Identifier: MIT
#pragma once

#include "display/records.h"

namespace libnivral {

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
