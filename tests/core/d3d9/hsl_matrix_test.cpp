// SPDX-License-Identifier: MIT
#include "backends/d3d9/hsl_matrix.h"

#include <gtest/gtest.h>

namespace {

void ExpectMatrix(const Matrix4& actual, const Matrix4& expected) {
  for (int row = 0; row < 4; ++row)
    for (int column = 0; column < 4; ++column)
      EXPECT_NEAR(actual.m[row][column], expected.m[row][column], 1e-6f) << row << "," << column;
}

TEST(HslMatrix, RotatesRowVectors) {
  ExpectMatrix(Rotation(Axis::X, 90), {{{1, 0, 0, 0}, {0, 0, 1, 0}, {0, -1, 0, 0}, {0, 0, 0, 1}}});
  ExpectMatrix(Rotation(Axis::Y, 90), {{{0, 0, -1, 0}, {0, 1, 0, 0}, {1, 0, 0, 0}, {0, 0, 0, 1}}});
  ExpectMatrix(Rotation(Axis::Z, 90), {{{0, 1, 0, 0}, {-1, 0, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}});
  const Vector3 p = TransformPoint({1, 2, 3}, Rotation(Axis::X, 90) * Rotation(Axis::Z, 90));
  EXPECT_NEAR(p.x, 3, 1e-6);  // (1, 2, 3) -> (1, -3, 2) -> (3, 1, 2)
  EXPECT_NEAR(p.y, 1, 1e-6);
  EXPECT_NEAR(p.z, 2, 1e-6);
}

// cos 35 = 0.8191520, sin 35 = 0.5735764, cos 45 = sin 45 = 0.7071068.
TEST(HslMatrix, TiltsBy45And35DegreesWithoutShear) {
  const HueMatrices hue = BuildHueMatrices();
  const Matrix4 tilt{{{0.8191520f, 0, 0.5735764f, 0},
                      {-0.4055798f, 0.7071068f, 0.5792280f, 0},
                      {-0.4055798f, -0.7071068f, 0.5792280f, 0},
                      {0, 0, 0, 1}}};
  ExpectMatrix(hue.pre, tilt);
  ExpectMatrix(hue.pre * hue.post, IdentityMatrix());
  const Vector3 luminance = TransformPoint({0.3086f, 0.6094f, 0.082f}, hue.pre);
  EXPECT_NEAR(luminance.x / luminance.z, -0.048, 0.002);
  EXPECT_NEAR(luminance.y / luminance.z, 0.646, 0.002);
}

TEST(HslMatrix, SaturatesAroundLuminance) {
  ExpectMatrix(SaturationMatrix(100), IdentityMatrix());
  ExpectMatrix(SaturationMatrix(0), {{{0.3086f, 0.3086f, 0.3086f, 0},
                                      {0.6094f, 0.6094f, 0.6094f, 0},
                                      {0.082f, 0.082f, 0.082f, 0},
                                      {0, 0, 0, 1}}});
  EXPECT_FLOAT_EQ(SaturationMatrix(200).m[0][0], 0.3086f * -3 + 4) << "2 squared";
  EXPECT_FLOAT_EQ(SaturationMatrix(-50).m[0][0], 0.3086f * 1.5f - 0.5f) << "not squared";
}

TEST(HslMatrix, CombinesSaturationAndHue) {
  const HueMatrices hue = BuildHueMatrices();
  ExpectMatrix(ColorMatrix(150, 0, hue), SaturationMatrix(150));
  ExpectMatrix(ColorMatrix(100, 360, hue), IdentityMatrix());
  ExpectMatrix(ColorMatrix(100, 90, hue) * ColorMatrix(100, -90, hue), IdentityMatrix());
  // A third of a turn about an axis close to grey nearly swaps the primaries.
  const Vector3 red = TransformPoint({1, 0, 0}, ColorMatrix(100, 120, hue));
  EXPECT_GT(red.y, 0.98f);
}

}  // namespace
