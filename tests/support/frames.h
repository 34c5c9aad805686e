// SPDX-License-Identifier: MIT
// Test pictures.
#pragma once

#include <algorithm>
#include <cstdint>
#include <random>
#include <vector>

#include "picture/frame_view.h"

using namespace libnivral;

/// A planar frame that owns its memory, with strides of its own choosing.
struct TestFrame {
  TestFrame(int32_t w, int32_t h, int32_t lumaStride, int32_t chromaStride)
      : width(w),
        height(h),
        strideY(lumaStride),
        strideUV(chromaStride),
        y(static_cast<size_t>(lumaStride) * static_cast<size_t>(h)),
        u(std::max<size_t>(static_cast<size_t>(chromaStride) * static_cast<size_t>(h / 2), 1)),
        v(u.size()) {}
  TestFrame(int32_t w, int32_t h) : TestFrame(w, h, w, w / 2) {}

  void Fill(uint8_t luma, uint8_t blue, uint8_t red) {
    y.assign(y.size(), luma);
    u.assign(u.size(), blue);
    v.assign(v.size(), red);
  }

  FrameView View() { return {y.data(), strideY, u.data(), strideUV, v.data(), strideUV}; }

  int32_t width;
  int32_t height;
  int32_t strideY;
  int32_t strideUV;
  std::vector<uint8_t> y;
  std::vector<uint8_t> u;
  std::vector<uint8_t> v;
};

inline TestFrame FlatFrame(int32_t width, int32_t height, uint8_t luma, uint8_t u, uint8_t v) {
  TestFrame frame(width, height);
  frame.Fill(luma, u, v);
  return frame;
}

inline TestFrame Grey(int width = 64, int height = 48) {
  return FlatFrame(width, height, 126, 128, 128);
}

/// Noise, with bytes behind each row.
inline TestFrame RandomFrame(int32_t width, int32_t height, std::mt19937& random, int32_t padding = 0) {
  TestFrame frame(width, height, width + padding, width / 2 + padding);
  for (auto* plane : {&frame.y, &frame.u, &frame.v})
    for (uint8_t& sample : *plane)
      sample = static_cast<uint8_t>(random());
  return frame;
}

/// Grey, dark at the left (16) to light at the right (235).
inline TestFrame GradientFrame(int32_t width, int32_t height) {
  TestFrame frame = FlatFrame(width, height, 0, 128, 128);
  for (size_t i = 0; i < frame.y.size(); ++i) {
    const int32_t x = static_cast<int32_t>(i) % frame.strideY;
    frame.y[i] = static_cast<uint8_t>(16 + 219 * x / (width - 1));
  }
  return frame;
}
