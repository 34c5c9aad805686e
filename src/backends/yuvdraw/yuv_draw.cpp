// SPDX-License-Identifier: MIT
#include "backends/yuvdraw/yuv_draw.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <iterator>

namespace libnivral {
namespace {

struct PaletteEntry {
  uint8_t y, u, v;
};

constexpr PaletteEntry kPalette[] = {{0, 0, 0},     {0, 0, 255},     {0, 255, 0},    {0, 255, 255},
                                     {255, 0, 0},   {255, 0, 255},   {255, 255, 0},  {255, 255, 255},
                                     {0, 128, 128}, {128, 128, 128}, {255, 128, 128}};

constexpr int32_t LowHalf(uint32_t point) {
  return static_cast<int32_t>(point & 0xFFFFu);
}

constexpr int32_t HighHalf(uint32_t point) {
  return static_cast<int32_t>(point >> 16);
}

/// Planes to draw into, or some without luma, which draw nothing.
PlaneSet MakePlanes(uint32_t width, uint32_t height, uint8_t* y, uint8_t* u, uint8_t* v) {
  if (width > UINT16_MAX || height > UINT16_MAX) return {};
  return {kPlanar420, y, u, v, static_cast<uint16_t>(width), static_cast<uint16_t>(height)};
}

PlaneLine MakeLine(int32_t x1, int32_t y1, int32_t x2, int32_t y2) {
  return {static_cast<uint16_t>(x1),
          static_cast<uint16_t>(y1),
          static_cast<uint16_t>(x2),
          static_cast<uint16_t>(y2),
          1,
          0};
}

uint16_t PullIn(uint16_t value, uint16_t limit, int32_t by) {
  return value < limit ? value : static_cast<uint16_t>(value - by);
}

/// One line of one pixel's width, stepping along its longer axis; `put` takes x and y.
template <class Put>
void Step(int32_t x, int32_t y, int32_t x2, int32_t y2, const Put& put) {
  const int32_t dx = std::abs(x2 - x);
  const int32_t dy = std::abs(y2 - y);
  const int32_t sx = x < x2 ? 1 : -1;
  const int32_t sy = y < y2 ? 1 : -1;
  const bool alongX = dx > dy;
  const int32_t longer = alongX ? dx : dy;
  const int32_t shorter = alongX ? dy : dx;
  int32_t error = 0;
  for (int32_t n = 0; n <= longer; ++n) {
    put(x, y);
    error += shorter;
    const bool aside = 2 * error >= longer;
    if (aside) error -= longer;
    if (alongX || aside) x += sx;
    if (!alongX || aside) y += sy;
  }
}

}  // namespace

void CYuvDraw::DrawRect(uint32_t, uint32_t width, uint32_t height, uint8_t* y, int32_t, uint8_t* u,
                        uint8_t* v, uint32_t, uint32_t topLeft, uint32_t bottomRight) {
  const PlaneSet planes = MakePlanes(width, height, y, u, v);
  const int32_t x1 = LowHalf(topLeft);
  const int32_t y1 = HighHalf(topLeft);
  const int32_t x2 = LowHalf(bottomRight);
  const int32_t y2 = HighHalf(bottomRight);
  DrawLine(&planes, MakeLine(x1, y1, x2, y1));
  DrawLine(&planes, MakeLine(x1, y1, x1, y2));
  DrawLine(&planes, MakeLine(x1, y2, x2, y2));
  DrawLine(&planes, MakeLine(x2, y1, x2, y2));
}

void CYuvDraw::FillRect(uint32_t, uint32_t width, uint32_t height, uint8_t* y, int32_t, uint8_t* u,
                        uint8_t* v, uint32_t, uint32_t topLeft, uint32_t bottomRight) {
  const PlaneSet planes = MakePlanes(width, height, y, u, v);
  for (int32_t row = HighHalf(topLeft); row < HighHalf(bottomRight); ++row)
    DrawLine(&planes, MakeLine(LowHalf(topLeft), row, LowHalf(bottomRight), row));
}

void CYuvDraw::DrawLine(const PlaneSet* planes, const PlaneLine& line) {
  if (!planes || !planes->y || planes->format != kPlanar420) return;
  const int32_t width = std::max<int32_t>(line.width, 1);
  const int32_t x1 = PullIn(line.x1, planes->width, width);
  const int32_t y1 = PullIn(line.y1, planes->height, width);
  const int32_t x2 = PullIn(line.x2, planes->width, width);
  const int32_t y2 = PullIn(line.y2, planes->height, width);
  const bool mostlyHorizontal = std::abs(y1 - y2) < std::abs(x1 - x2);
  for (int32_t pass = 0; pass < width; ++pass) {
    const int32_t right = mostlyHorizontal ? 0 : pass;
    const int32_t down = mostlyHorizontal ? pass : 0;
    Step(x1 + right, y1 + down, x2 + right, y2 + down,
         [&](int32_t x, int32_t y) { PutPixel(*planes, PackPoint(x, y), line.colourIndex); });
  }
}

void CYuvDraw::PutPixel(const PlaneSet& planes, uint32_t point, int32_t colourIndex) {
  if (colourIndex < 0 || colourIndex >= static_cast<int32_t>(std::size(kPalette))) return;
  const PaletteEntry& colour = kPalette[colourIndex];
  const auto x = static_cast<size_t>(LowHalf(point));
  const auto y = static_cast<size_t>(HighHalf(point));
  const size_t width = planes.width;
  const size_t luma = y * width + x;
  if (luma < width * planes.height) planes.y[luma] = colour.y;
  const size_t chroma = ((y >> 1) * width >> 1) + (x >> 1);
  if (chroma >= (width / 2) * (planes.height / 2u)) return;
  if (planes.u) planes.u[chroma] = colour.u;
  if (planes.v) planes.v[chroma] = colour.v;
}

}  // namespace libnivral
