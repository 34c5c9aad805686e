// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

#include "display/mosaic_layout.h"

namespace libnivral {

/// Fills every block of a mosaic with its first pixel's colour, in a picture of `width` x `height` pixels of
/// 2 to 4 bytes in memory. Blocks that reach out of the picture are cut.
void FillBlocks(uint8_t* pixels, ptrdiff_t pitch, int32_t bytesPerPixel, int32_t width, int32_t height,
                const MosaicGrid& grid);

}  // namespace libnivral
