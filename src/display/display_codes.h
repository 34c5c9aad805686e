// SPDX-License-Identifier: MIT
// Result codes of displayer operations.
#pragma once

#include <cstdint>

namespace libnivral {

constexpr int32_t kOk = 0;
constexpr int32_t kNotInitialised = 0x2001;  ///< a frame came and the backend could not be made ready
constexpr int32_t kBadSize = 0x2002;         ///< a width or height below 1
constexpr int32_t kNoMemory = 0x2003;
constexpr int32_t kNoDevice = 0x2004;    ///< the graphics interface or its device could not be created
constexpr int32_t kFailed = 0x2FFF;      ///< anything else
constexpr int32_t kNoFileName = 0x2002;  ///< a snapshot without a file name

}  // namespace libnivral
