// SPDX-License-Identifier: MIT
// Matrices of the colour shader: row vectors, so a product applies its left factor first.
#pragma once

#include <array>
#include <cstdint>

namespace libnivral {

struct Matrix4 {
  float m[4][4];
};

struct Vector3 {
  float x;
  float y;
  float z;
};

enum class Axis { X, Y, Z };

Matrix4 IdentityMatrix();
Matrix4 Rotation(Axis axis, float degrees);
Matrix4 operator*(const Matrix4& a, const Matrix4& b);

/// Moves x and y by multiples of z.
Matrix4 ShearAlongZ(float x, float y);

/// Transforms a point and divides by its fourth coordinate.
Vector3 TransformPoint(const Vector3& point, const Matrix4& matrix);

/// What comes before and after a hue rotation about z: tilts the grey axis to z and back.
struct HueMatrices {
  Matrix4 pre;
  Matrix4 post;
};
HueMatrices BuildHueMatrices();

/// Mixes colours with their luminance. Percent, 100 leaves them as they are; positive values act squared.
Matrix4 SaturationMatrix(int32_t saturation);

/// Saturation in percent, then hue in degrees.
Matrix4 ColourMatrix(int32_t saturation, int32_t hue, const HueMatrices& hueMatrices);

/// A vertex of the full-frame quad.
struct HslVertex {
  float x;
  float y;
  float z;
  float rhw;
  uint32_t colour;
  float u;
  float v;
};
static_assert(sizeof(HslVertex) == 28);

/// Two triangles over the frame, half a pixel up and left so that texel centres meet pixel centres.
std::array<HslVertex, 6> FrameQuad(uint32_t width, uint32_t height);

}  // namespace libnivral
