// SPDX-License-Identifier: MIT
#include "backends/ddraw/ddraw_layout.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace libnivral {
namespace {

/// Window coordinates are 16-bit on the wire of window messages; beyond them nothing is on any screen.
constexpr PixelRect kReachable{-32768, -32768, 32767, 32767};

int32_t Distance(int32_t from, int32_t to) {
  return SaturateToInt(int64_t{to} - from);
}

}  // namespace

PixelRect DrawnArea(const PixelRect& play, const PixelRect& client) {
  const PixelRect area = Intersect(play.Empty() ? client : play, kReachable);
  if (area.Empty() || area.Width() > kMaxAreaSide || area.Height() > kMaxAreaSide) return {};
  return area;
}

PixelRect RelativeTo(int32_t x, int32_t y, const PixelRect& rect) {
  return {Distance(x, rect.left), Distance(y, rect.top), Distance(x, rect.right), Distance(y, rect.bottom)};
}

ScreenCopy CutToScreen(int32_t x, int32_t y, int32_t width, int32_t height, const PixelRect& bounds) {
  const PixelRect target = Intersect({x, y, x + width, y + height}, bounds);
  if (target.Empty()) return {};
  return {{target.left - x, target.top - y, target.right - x, target.bottom - y}, target};
}

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

bool IsRed(const uint8_t* pixel, PixelFormat format) {
  uint32_t value = 0;
  std::memcpy(&value, pixel, static_cast<size_t>(BytesPerPixel(format)));
  const Entry& e = *std::find_if(std::begin(kEntries), std::end(kEntries),
                                 [&](const Entry& x) { return x.format == format; });
  const auto quarters = [&](uint32_t mask) { return (value & mask) / (mask / 4); };
  return quarters(e.red) >= 3 && quarters(e.green) == 0 && quarters(e.blue) == 0;
}

}  // namespace libnivral
