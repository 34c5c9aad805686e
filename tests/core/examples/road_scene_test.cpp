// SPDX-License-Identifier: MIT
#include "road_scene.h"

#include <gmock/gmock.h>

#include <set>
#include <tuple>

namespace {

using Sample = std::tuple<int, int, int>;

/// Samples along the inside (inset 0) or outside (inset -1) of a box's four edges, where they are in view.
std::set<Sample> Outline(const Picture& p, const PixelBox& box, int inset) {
  std::set<Sample> samples;
  for (int y = box.top + inset; y < box.bottom - inset; ++y) {
    const bool edge = y == box.top + inset || y == box.bottom - 1 - inset;
    for (int x = box.left + inset; x < box.right - inset;
         x += edge ? 1 : std::max(box.right - box.left - 1 - 2 * inset, 1)) {
      if (x < 0 || y < 0 || x >= p.width || y >= p.height) continue;
      const auto luma = static_cast<size_t>(y * p.width + x);
      const auto chroma = static_cast<size_t>(y / 2 * p.strideUV + x / 2);
      samples.emplace(p.y[luma], p.u[chroma], p.v[chroma]);
    }
  }
  return samples;
}

TEST(RoadScene, BoxesAreExactlyThePaintedPixels) {
  for (const auto& [width, height] : {std::pair{1280, 720}, {176, 144}, {720, 1280}, {2, 64}}) {
    const RoadScene scene(width, height);
    Picture picture(width, height);
    for (const int64_t frame : {0, 77, 130, 1'000'000'007}) {
      scene.Draw(frame, picture);
      for (const SceneVehicle& vehicle : scene.Vehicles(frame)) {
        const Sample body{vehicle.body.y, vehicle.body.u, vehicle.body.v};
        if (width < 100) continue;
        EXPECT_THAT(Outline(picture, vehicle.box, 0), testing::ElementsAre(body));
        EXPECT_THAT(Outline(picture, vehicle.box, -1), testing::Not(testing::Contains(body)));
      }
    }
  }
  EXPECT_THROW(RoadScene(0, 2), std::invalid_argument);
  EXPECT_THROW(RoadScene(64, 63), std::invalid_argument);
}

}  // namespace
