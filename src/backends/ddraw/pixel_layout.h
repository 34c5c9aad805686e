// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

#include "colour/kernels.h"

/// Which of the formats that frames can be converted to a display mode has, if any: `bits` per pixel and the
/// masks of the three channels in a little-endian pixel.
std::optional<PixelFormat> IdentifyPixels(uint32_t bits, uint32_t red, uint32_t green, uint32_t blue);

int32_t BytesPerPixel(PixelFormat format);
