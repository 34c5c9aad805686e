// SPDX-License-Identifier: MIT
#include "display/class_label.h"

#include <cstring>
#include <iterator>

namespace libnivral {
namespace {

constexpr const char* kLabels[] = {"unknown", "Person",  "car",     "bus",
                                   "truck",   "minibus", "vehicle", "non-vehicle"};
constexpr const char* kOtherLabel = "Unk";

}  // namespace

bool CopyClassLabel(char* buffer, uint16_t classId) {
  if (!buffer) return false;
  const char* label = classId < std::size(kLabels) ? kLabels[classId] : kOtherLabel;
  std::strncpy(buffer, label, kClassLabelBytes);  // pads with zeros
  return true;
}

}  // namespace libnivral
