// SPDX-License-Identifier: MIT
#include "backends/ddraw/pixel_layout.h"

namespace {

struct Entry {
  PixelFormat format;
  uint32_t bits;
  uint32_t red;
  uint32_t green;
  uint32_t blue;
};

// Drivers report 5-5-5 with 16 bits per pixel, some with 15.
constexpr Entry kEntries[] = {
    {PixelFormat::Bgrx32, 32, 0xFF0000, 0x00FF00, 0x0000FF},
    {PixelFormat::Bgr24, 24, 0xFF0000, 0x00FF00, 0x0000FF},
    {PixelFormat::Rgb565, 16, 0xF800, 0x07E0, 0x001F},
    {PixelFormat::Rgb555, 16, 0x7C00, 0x03E0, 0x001F},
    {PixelFormat::Rgb555, 15, 0x7C00, 0x03E0, 0x001F},
};

}  // namespace

std::optional<PixelFormat> IdentifyPixels(uint32_t bits, uint32_t red, uint32_t green, uint32_t blue) {
  for (const Entry& e : kEntries) {
    if (e.bits == bits && e.red == red && e.green == green && e.blue == blue) return e.format;
  }
  return std::nullopt;
}

int32_t BytesPerPixel(PixelFormat format) {
  switch (format) {
    case PixelFormat::Bgrx32:
      return 4;
    case PixelFormat::Bgr24:
      return 3;
    case PixelFormat::Rgb565:
    case PixelFormat::Rgb555:
      break;
  }
  return 2;
}
