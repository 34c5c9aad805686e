// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace libnivral {

constexpr int32_t kClassLabelBytes = 64;

/// Writes what a driver-assistance class is called into a buffer of kClassLabelBytes, zero-filled behind the
/// text. False for a null buffer.
bool CopyClassLabel(char* buffer, uint16_t classId);

}  // namespace libnivral
