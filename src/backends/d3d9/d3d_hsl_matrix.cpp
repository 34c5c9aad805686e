// SPDX-License-Identifier: MIT
#include "backends/d3d9/d3d_hsl_matrix.h"

#include <cmath>

namespace libnivral {
namespace {

constexpr float kRadiansPerDegree = 0.017453292f;

/// Luminance weights of linear red, green and blue.
constexpr Vector3 kLuminance{0.3086f, 0.6094f, 0.082f};

constexpr float kTiltX = 45.0f;
constexpr float kTiltY = 35.0f;  // not the 35.26 degrees that would put the grey axis on z exactly

}  // namespace

Matrix4 IdentityMatrix() {
  return {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};
}

Matrix4 Rotation(Axis axis, float degrees) {
  const float angle = degrees * kRadiansPerDegree;
  const float c = std::cos(angle);
  const float s = std::sin(angle);
  switch (axis) {
    case Axis::Y:
      return {{{c, 0, -s, 0}, {0, 1, 0, 0}, {s, 0, c, 0}, {0, 0, 0, 1}}};
    case Axis::Z:
      return {{{c, s, 0, 0}, {-s, c, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};
    default:
      return {{{1, 0, 0, 0}, {0, c, s, 0}, {0, -s, c, 0}, {0, 0, 0, 1}}};
  }
}

Matrix4 operator*(const Matrix4& a, const Matrix4& b) {
  Matrix4 product{};
  for (int row = 0; row < 4; ++row) {
    for (int column = 0; column < 4; ++column) {
      for (int i = 0; i < 4; ++i)
        product.m[row][column] += a.m[row][i] * b.m[i][column];
    }
  }
  return product;
}

Matrix4 ShearAlongZ(float x, float y) {
  Matrix4 shear = IdentityMatrix();
  shear.m[0][2] = x;
  shear.m[1][2] = y;
  return shear;
}

Vector3 TransformPoint(const Vector3& p, const Matrix4& matrix) {
  const auto coordinate = [&](int column) {
    return p.x * matrix.m[0][column] + p.y * matrix.m[1][column] + p.z * matrix.m[2][column] +
           matrix.m[3][column];
  };
  const float w = coordinate(3);
  return {coordinate(0) / w, coordinate(1) / w, coordinate(2) / w};
}

// The shears, which would bring the plane of equal luminance level, are cut to whole numbers and so have no
// effect with these weights.
HueMatrices BuildHueMatrices() {
  const Matrix4 tilt = Rotation(Axis::X, kTiltX) * Rotation(Axis::Y, -kTiltY);
  const Vector3 luminance = TransformPoint(kLuminance, tilt);
  const float x = luminance.x / luminance.z;
  const float y = luminance.y / luminance.z;
  return {
      tilt * ShearAlongZ(std::trunc(x), std::trunc(y)),
      ShearAlongZ(std::trunc(-x), std::trunc(-y)) * Rotation(Axis::Y, kTiltY) * Rotation(Axis::X, -kTiltX)};
}

Matrix4 SaturationMatrix(int32_t saturation) {
  float s = static_cast<float>(saturation) / 100.0f;
  if (saturation > 0) s *= s;
  const float r = kLuminance.x * (1 - s);
  const float g = kLuminance.y * (1 - s);
  const float b = kLuminance.z * (1 - s);
  return {{{r + s, r, r, 0}, {g, g + s, g, 0}, {b, b, b + s, 0}, {0, 0, 0, 1}}};
}

Matrix4 ColourMatrix(int32_t saturation, int32_t hue, const HueMatrices& hueMatrices) {
  return SaturationMatrix(saturation) * hueMatrices.pre * Rotation(Axis::Z, static_cast<float>(hue)) *
         hueMatrices.post;
}

std::array<HslVertex, 6> FrameQuad(uint32_t width, uint32_t height) {
  const float right = static_cast<float>(width) - 0.5f;
  const float bottom = static_cast<float>(height) - 0.5f;
  const auto corner = [&](bool atRight, bool atBottom) {
    return HslVertex{atRight ? right : -0.5f, atBottom ? bottom : -0.5f, 0.0f, 1.0f, 0xFFFFFFFF,
                     atRight ? 1.0f : 0.0f,   atBottom ? 1.0f : 0.0f};
  };
  return {corner(false, false), corner(true, false), corner(false, true),
          corner(false, true),  corner(true, false), corner(true, true)};
}

}  // namespace libnivral
