// SPDX-License-Identifier: MIT
#include "support/screen.h"

#include <cmath>
#include <cstdlib>
#include <ostream>

#include "support/wait.h"

ScreenShot::ScreenShot(const RECT& area)
    : m_width(area.right - area.left),
      m_height(area.bottom - area.top),
      m_pixels(static_cast<size_t>(m_width) * static_cast<size_t>(m_height)) {
  HDC screen = GetDC(nullptr);
  HDC memory = CreateCompatibleDC(screen);
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof(info.bmiHeader);
  info.bmiHeader.biWidth = m_width;
  info.bmiHeader.biHeight = -m_height;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  void* bits = nullptr;
  HBITMAP bitmap = CreateDIBSection(screen, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  HGDIOBJ previous = SelectObject(memory, bitmap);
  BitBlt(memory, 0, 0, m_width, m_height, screen, area.left, area.top, SRCCOPY);
  GdiFlush();
  const auto* pixels = static_cast<const uint32_t*>(bits);
  m_pixels.assign(pixels, pixels + m_pixels.size());
  SelectObject(memory, previous);
  DeleteObject(bitmap);
  DeleteDC(memory);
  ReleaseDC(nullptr, screen);
}

Rgb ScreenShot::At(int x, int y) const {
  const uint32_t pixel = m_pixels.at(static_cast<size_t>(y * m_width + x));
  return {static_cast<int>(pixel >> 16 & 255), static_cast<int>(pixel >> 8 & 255),
          static_cast<int>(pixel & 255)};
}

bool Near(const Rgb& a, const Rgb& b, int tolerance) {
  return std::abs(a.r - b.r) <= tolerance && std::abs(a.g - b.g) <= tolerance &&
         std::abs(a.b - b.b) <= tolerance;
}

RECT ClientOnScreen(HWND window) {
  RECT area{};
  GetClientRect(window, &area);
  MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&area), 2);
  return area;
}

Rgb ToRgb(int y, int u, int v, bool limitedRange) {
  const double luma = limitedRange ? (y - 16) * 255.0 / 219.0 : y;
  const double scale = limitedRange ? 255.0 / 224.0 : 1.0;
  const double blue = (u - 128) * scale, red = (v - 128) * scale;
  const auto channel = [](double value) {
    return static_cast<int>(std::lround(std::clamp(value, 0.0, 255.0)));
  };
  return {channel(luma + 1.402 * red), channel(luma - 0.344136 * blue - 0.714136 * red),
          channel(luma + 1.772 * blue)};
}

Rgb PixelOf(HWND window, int x, int y) {
  const RECT client = ClientOnScreen(window);
  return ScreenShot({client.left + x, client.top + y, client.left + x + 1, client.top + y + 1}).At(0, 0);
}

Rgb WaitForPixel(HWND window, int x, int y, const Rgb& expected, int tolerance) {
  WaitUntil([&] { return Near(PixelOf(window, x, y), expected, tolerance); });
  return PixelOf(window, x, y);
}

void PrintTo(const Rgb& colour, std::ostream* out) {
  *out << "rgb(" << colour.r << ", " << colour.g << ", " << colour.b << ")";
}
