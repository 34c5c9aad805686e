// SPDX-License-Identifier: MIT
// A locked YV12 surface as the device lays it out in memory.
#pragma once

#include <cstdint>

namespace libnivral {

/// Widest digital zoom.
constexpr int32_t kMaxZoom = 8;

/// One plane of the surface. Chroma rows are half a luma pitch apart, which need not be a whole number, so
/// steps are kept doubled.
struct SurfacePlane {
  uint8_t* first;
  int64_t doubleStep;
  int32_t width;
  int32_t height;

  uint8_t* Row(int64_t row) const { return first + row * doubleStep / 2; }
};

/// Y, then V, then U, in one block of pitch * height * 3 / 2 bytes. Width and height are those of the video.
struct Yv12Surface {
  uint8_t* bits;
  int32_t pitch;
  int32_t width;
  int32_t height;

  SurfacePlane Luma() const { return {bits, int64_t{pitch} * 2, width, height}; }
  SurfacePlane V() const { return {bits + LumaBytes(), pitch, width / 2, height / 2}; }
  SurfacePlane U() const { return {bits + LumaBytes() + LumaBytes() / 4, pitch, width / 2, height / 2}; }

 private:
  int64_t LumaBytes() const { return int64_t{pitch} * height; }
};

}  // namespace libnivral
