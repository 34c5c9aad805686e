// SPDX-License-Identifier: MIT
// A drawn driver's face that sways, with the landmarks a driver-monitoring algorithm would report.
#pragma once

#include <array>

#include "paint.h"

class DriverScene {
 public:
  static constexpr size_t kLandmarks = 68;

  struct Face {
    std::array<float, kLandmarks> x;
    std::array<float, kLandmarks> y;
    PixelBox box;
  };

  /// Any even size.
  DriverScene(int width, int height) : m_width(width), m_height(height) {}

  int Width() const { return m_width; }
  int Height() const { return m_height; }
  Face FaceAt(int64_t frame) const;

  /// `picture` has the scene's size.
  void Draw(int64_t frame, Picture& picture) const;

 private:
  struct Head {
    double x, y, radiusX, radiusY;
  };
  Head HeadAt(int64_t frame) const;

  int m_width;
  int m_height;
};
