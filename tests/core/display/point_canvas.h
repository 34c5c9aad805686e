// SPDX-License-Identifier: MIT
// Overlays painted the long way round: point by point and line by line, into a bitmap.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

#include "picture/pixel_rect.h"

class PointCanvas {
 public:
  PointCanvas(int w, int h) : m_width(w), m_height(h), m_pixels(static_cast<size_t>(w * h), '.') {}

  void Point(long long x, long long y, char mark) {
    if (x >= 0 && y >= 0 && x < m_width && y < m_height)
      m_pixels[static_cast<size_t>(y * m_width + x)] = mark;
  }

  /// Straight line with both ends.
  void Line(long long x1, long long y1, long long x2, long long y2, char mark) {
    for (long long x = std::min(x1, x2); x <= std::max(x1, x2); ++x) {
      for (long long y = std::min(y1, y2); y <= std::max(y1, y2); ++y)
        Point(x, y, mark);
    }
  }

  void Rect(const PixelRect& r, char mark) { Area(r.left, r.top, r.Width(), r.Height(), mark); }

  void Area(long long x, long long y, long long w, long long h, char mark) {
    if (w > 0 && h > 0) Line(x, y, x + w - 1, y + h - 1, mark);
  }

  void Outline(long long x, long long y, long long w, long long h, char mark) {
    Line(x, y, x + w - 1, y, mark);
    Line(x + w - 1, y, x + w - 1, y + h - 1, mark);
    Line(x + w - 1, y + h - 1, x, y + h - 1, mark);
    Line(x, y + h - 1, x, y, mark);
  }

  void Disc(long long x, long long y, long long r, char mark) {
    for (long long i = 0; i < 2 * r; ++i) {
      for (long long j = 0; j < 2 * r; ++j) {
        if ((r - i) * (r - i) + (r - j) * (r - j) <= r * r) Point(x + r - i, y + r - j, mark);
      }
    }
  }

  void Corners(long long x, long long y, long long w, long long h, char mark) {
    const long long sw = w / 8, sh = h / 8;
    Line(x, y, x + sw, y, mark);
    Line(x, y, x, y + sh, mark);
    Line(x + 7 * sw, y, x + w, y, mark);
    Line(x + w, y, x + w, y + sh, mark);
    Line(x, y + 7 * sh, x, y + h, mark);
    Line(x, y + h, x + sw, y + h, mark);
    Line(x + 7 * sw, y + h, x + w, y + h, mark);
    Line(x + w, y + 7 * sh, x + w, y + h, mark);
  }

  std::vector<std::string> Picture() const {
    std::vector<std::string> rows;
    for (int y = 0; y < m_height; ++y)
      rows.push_back(m_pixels.substr(static_cast<size_t>(y * m_width), static_cast<size_t>(m_width)));
    return rows;
  }

 private:
  int m_width;
  int m_height;
  std::string m_pixels;
};
