// SPDX-License-Identifier: MIT
#include "backends/d3d9/d3d_hsl_matrix.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using namespace libnivral;

namespace {

using Colour = std::array<double, 3>;

/// Turns from one axis toward the other.
Colour Turned(Colour c, size_t from, size_t to, double degrees) {
  const double angle = degrees * 3.14159265358979 / 180;
  const double a = c[from], b = c[to];
  c[from] = a * std::cos(angle) - b * std::sin(angle);
  c[to] = a * std::sin(angle) + b * std::cos(angle);
  return c;
}

/// Away from or toward the luminance, then about an axis near to grey, which is laid upon z and back for it.
Colour Expected(Colour c, int saturation, int hue) {
  const double share = saturation > 0 ? saturation * saturation / 1e4 : saturation / 100.0;
  const double luminance = 0.3086 * c[0] + 0.6094 * c[1] + 0.082 * c[2];
  for (double& channel : c)
    channel = luminance + (channel - luminance) * share;
  c = Turned(Turned(c, 1, 2, 45), 2, 0, -35);
  c = Turned(c, 0, 1, hue);
  return Turned(Turned(c, 2, 0, 35), 1, 2, -45);
}

TEST(HslMatrix, SaturatesAroundTheLuminanceAndTurnsTheHue) {
  std::mt19937 random(8);
  const HueMatrices hues = BuildHueMatrices();
  for (int round = 0; round < 500; ++round) {
    const auto next = [&](int limit) { return static_cast<int>(random() % static_cast<uint32_t>(limit)); };
    const int saturation = next(301) - 100, hue = next(361) - 180;
    const Vector3 in{static_cast<float>(next(256)), static_cast<float>(next(256)),
                     static_cast<float>(next(256))};
    const Vector3 out = TransformPoint(in, ColourMatrix(saturation, hue, hues));
    const Colour want = Expected({in.x, in.y, in.z}, saturation, hue);
    ASSERT_NEAR(out.x, want[0], 0.01) << saturation << ", " << hue;
    ASSERT_NEAR(out.y, want[1], 0.01) << saturation << ", " << hue;
    ASSERT_NEAR(out.z, want[2], 0.01) << saturation << ", " << hue;
  }
  const auto quad = FrameQuad(200, 150);  // a pixel's middle lies on whole numbers
  EXPECT_TRUE(quad[0].x == -0.5f && quad[0].y == -0.5f && quad[5].x == 199.5f && quad[5].y == 149.5f);
}

}  // namespace
