// SPDX-License-Identifier: MIT
// Reads what is really on the screen.
#pragma once

#include <windows.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <iosfwd>
#include <utility>
#include <vector>

struct Rgb {
  int r;
  int g;
  int b;
};

/// A copy of a rectangle of the screen, or of a picture.
class ScreenShot {
 public:
  /// `area` in screen coordinates.
  explicit ScreenShot(const RECT& area);
  /// Words of 0xRRGGBB from the left of the top row on.
  ScreenShot(int width, int height, std::vector<uint32_t> pixels)
      : m_width(width), m_height(height), m_pixels(std::move(pixels)) {}

  int Width() const { return m_width; }
  int Height() const { return m_height; }
  Rgb At(int x, int y) const;

 private:
  int m_width;
  int m_height;
  std::vector<uint32_t> m_pixels;
};

/// Whether two colours differ by at most `tolerance` in each channel.
bool Near(const Rgb& a, const Rgb& b, int tolerance);

/// A client rectangle of `window`, or its whole client area, in screen coordinates.
RECT ClientOnScreen(HWND window);

/// The colour of a BT.601 sample.
Rgb ToRgb(int y, int u, int v, bool limitedRange);

/// The colour of a client pixel on the screen.
Rgb PixelOf(HWND window, int x, int y);

/// Presenting is asynchronous: waits until a client pixel is near `expected` and returns its colour, else the last
/// one seen.
Rgb WaitForPixel(HWND window, int x, int y, const Rgb& expected, int tolerance = 2);

/// How many pixels of an area meet a condition, and their extent.
struct Found {
  int count = 0;
  RECT box{INT_MAX, INT_MAX, -1, -1};  ///< right and bottom are the last ones
};
template <class Is>
Found Find(const ScreenShot& shot, Is&& is, RECT area = {0, 0, INT_MAX, INT_MAX}) {
  Found found;
  for (LONG y = area.top; y < std::min<LONG>(area.bottom, shot.Height()); ++y)
    for (LONG x = area.left; x < std::min<LONG>(area.right, shot.Width()); ++x) {
      if (!is(shot.At(x, y))) continue;
      ++found.count;
      found.box = {std::min(found.box.left, x), std::min(found.box.top, y), std::max(found.box.right, x),
                   std::max(found.box.bottom, y)};
    }
  return found;
}

void PrintTo(const Rgb& colour, std::ostream* out);

/// EXPECTs that a client pixel gets near a colour.
#define EXPECT_PIXEL(window, x, y, ...)                                                              \
  do {                                                                                               \
    const Rgb expectedPixel __VA_ARGS__;                                                             \
    const Rgb seenPixel = WaitForPixel(window, x, y, expectedPixel);                                 \
    EXPECT_TRUE(Near(seenPixel, expectedPixel, 2))                                                   \
        << "at " << (x) << "," << (y) << ": " << testing::PrintToString(seenPixel) << " instead of " \
        << testing::PrintToString(expectedPixel);                                                    \
  } while (false)
