// SPDX-License-Identifier: MIT
// Where things go: from the play rectangle in the window to the part of the screen that a blit may touch.
#pragma once

#include <cstdint>
#include <optional>

#include "colour/kernels.h"
#include "picture/pixel_rect.h"

namespace libnivral {

/// Largest side of a drawn area, in pixels; what graphics drivers take as a surface everywhere.
constexpr int64_t kMaxAreaSide = 8192;

/// The part of the client area that is drawn into, in client coordinates: the play rectangle, or the whole
/// client area when that is empty. Empty when there is nothing to draw into or when it is too large.
PixelRect DrawnArea(const PixelRect& play, const PixelRect& client);

/// The same rectangle relative to (x, y). Coordinates are limited to what 32 bits hold.
PixelRect RelativeTo(int32_t x, int32_t y, const PixelRect& rect);

/// A copy without scaling: `source` in the copied picture, `target` on the screen. Both empty when nothing of
/// the picture is inside the bounds.
struct ScreenCopy {
  PixelRect source;
  PixelRect target;
};

/// Cuts a picture at (x, y) of the screen down to what lies inside `bounds`.
ScreenCopy CutToScreen(int32_t x, int32_t y, int32_t width, int32_t height, const PixelRect& bounds);

/// Which of the formats that frames can be converted to a display mode has, if any: `bits` per pixel and the
/// masks of the three channels in a little-endian pixel.
std::optional<PixelFormat> IdentifyPixels(uint32_t bits, uint32_t red, uint32_t green, uint32_t blue);

int32_t BytesPerPixel(PixelFormat format);

/// Whether a pixel is red: at least three quarters of it, and less than a quarter of green and blue.
bool IsRed(const uint8_t* pixel, PixelFormat format);

}  // namespace libnivral
