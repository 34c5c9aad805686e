// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "support/screen.h"

/// The pixels of a picture file.
class PngPicture {
 public:
  /// A file that cannot be read gives a picture without pixels.
  explicit PngPicture(const std::string& path);

  int Width() const { return m_width; }
  int Height() const { return m_height; }
  Rgb At(int x, int y) const;

 private:
  int m_width = 0;
  int m_height = 0;
  std::vector<uint32_t> m_pixels;
};
