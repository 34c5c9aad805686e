// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace libnivral {

/// The one plane layout that is drawn into. Samples lie at y * width + x in the luma plane, whatever its
/// stride, and at ((y >> 1) * width >> 1) + (x >> 1) in the chroma planes.
constexpr uint32_t kPlanar420 = 7;

struct PlaneSet {
  uint32_t format = kPlanar420;
  uint8_t* y = nullptr;
  uint8_t* u = nullptr;
  uint8_t* v = nullptr;
  uint16_t width = 0;
  uint16_t height = 0;
};

struct PlaneLine {
  uint16_t x1 = 0;
  uint16_t y1 = 0;
  uint16_t x2 = 0;
  uint16_t y2 = 0;
  uint16_t width = 1;  ///< 0 draws like 1
  int32_t colourIndex = 0;
};

/// A point in 32 bits: x in the low half, y in the high half; each keeps its low 16 bits.
constexpr uint32_t PackPoint(int64_t x, int64_t y) {
  return (static_cast<uint32_t>(x) & 0xFFFFu) | (static_cast<uint32_t>(y) << 16);
}

/// Draws lines and rectangles into planar 4:2:0 memory: width * height bytes of luma and
/// (width / 2) * (height / 2) in each chroma plane, of which no byte outside is written. A point right of the
/// picture lands in the rows below it, as far as the planes reach. Missing chroma planes are left out.
class CYuvDraw {
 public:
  CYuvDraw() = default;
  CYuvDraw(const CYuvDraw&) = default;
  CYuvDraw& operator=(const CYuvDraw&) = default;
  virtual ~CYuvDraw() = default;

  /// Outline of one pixel in palette entry 0, both corners included. Sizes above 65535 draw nothing.
  virtual void DrawRect(uint32_t unused, uint32_t width, uint32_t height, uint8_t* y, int32_t unusedStride,
                        uint8_t* u, uint8_t* v, uint32_t unused2, uint32_t topLeft, uint32_t bottomRight);

  /// Area in palette entry 0, right column included, bottom row not.
  virtual void FillRect(uint32_t unused, uint32_t width, uint32_t height, uint8_t* y, int32_t unusedStride,
                        uint8_t* u, uint8_t* v, uint32_t unused2, uint32_t topLeft, uint32_t bottomRight);

  /// Thick lines grow downward when mostly horizontal, else to the right. Ends outside the picture are pulled
  /// in by the line's width, not clamped.
  static void DrawLine(const PlaneSet* planes, const PlaneLine& line);

 private:
  static void PutPixel(const PlaneSet& planes, uint32_t point, int32_t colourIndex);
};

}  // namespace libnivral
