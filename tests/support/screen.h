// SPDX-License-Identifier: MIT
// Reads what is really on the screen.
#pragma once

#include <windows.h>

#include <cstdint>
#include <iosfwd>
#include <vector>

struct Rgb {
  int r;
  int g;
  int b;
};

/// A copy of a rectangle of the screen.
class ScreenShot {
 public:
  /// `area` in screen coordinates.
  explicit ScreenShot(const RECT& area);

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

/// Presenting is asynchronous: polls one client pixel for up to `timeoutMs` and returns its colour as soon as
/// it is near `expected`, else the last colour seen.
Rgb WaitForPixel(HWND window, int x, int y, const Rgb& expected, int tolerance = 2, DWORD timeoutMs = 2000);

void PrintTo(const Rgb& color, std::ostream* out);

/// EXPECTs that a client pixel gets near a colour.
#define EXPECT_PIXEL(window, x, y, ...)                                                              \
  do {                                                                                               \
    const Rgb expectedPixel __VA_ARGS__;                                                             \
    const Rgb seenPixel = WaitForPixel(window, x, y, expectedPixel);                                 \
    EXPECT_TRUE(Near(seenPixel, expectedPixel, 2))                                                   \
        << "at " << (x) << "," << (y) << ": " << testing::PrintToString(seenPixel) << " instead of " \
        << testing::PrintToString(expectedPixel);                                                    \
  } while (false)
