// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>

/// A planar YUV 4:2:0 picture and its place in a clip. Copies share the planes, which `owner` keeps.
struct Frame {
  const uint8_t* y = nullptr;
  const uint8_t* u = nullptr;
  const uint8_t* v = nullptr;
  uint32_t strideY = 0;
  uint32_t strideUV = 0;
  int width = 0;
  int height = 0;
  double time = 0;      ///< seconds from the clip's start
  double duration = 0;  ///< seconds
  int64_t number = 0;   ///< the clip's first frame is 0
  std::shared_ptr<const void> owner;

  explicit operator bool() const { return y != nullptr; }
};
