// SPDX-License-Identifier: MIT
#include "road_scene.h"

#include <gmock/gmock.h>

#include <set>
#include <tuple>

namespace {

using Sample = std::tuple<int, int, int>;

Sample At(const Picture& picture, int x, int y) {
  const auto luma = static_cast<size_t>(y * picture.width + x);
  const auto chroma = static_cast<size_t>(y / 2 * picture.strideUV + x / 2);
  return {picture.y[luma], picture.u[chroma], picture.v[chroma]};
}

Sample Body(const SceneVehicle& vehicle) {
  return {vehicle.body.y, vehicle.body.u, vehicle.body.v};
}

/// Samples along the inside (inset 0) or outside (inset -1) of a box's four edges, where they are in view.
std::set<Sample> Outline(const Picture& picture, const PixelBox& box, int inset) {
  std::set<Sample> samples;
  const auto add = [&](int x, int y) {
    if (x >= 0 && y >= 0 && x < picture.width && y < picture.height) samples.insert(At(picture, x, y));
  };
  for (int x = box.left; x < box.right; ++x) {
    add(x, box.top + inset);
    add(x, box.bottom - 1 - inset);
  }
  for (int y = box.top; y < box.bottom; ++y) {
    add(box.left + inset, y);
    add(box.right - 1 - inset, y);
  }
  return samples;
}

struct Size {
  int width;
  int height;
};
constexpr Size kSizes[] = {{1280, 720}, {352, 288}, {176, 144}, {720, 1280}};
constexpr int64_t kFrames[] = {0, 1, 77, 130, 1999, 1'000'000'007};

TEST(RoadScene, BoxesAreExactlyThePaintedPixels) {
  for (const Size& size : kSizes) {
    const RoadScene scene(size.width, size.height);
    Picture picture(size.width, size.height);
    for (const int64_t frame : kFrames) {
      scene.Draw(frame, picture);
      for (const SceneVehicle& vehicle : scene.Vehicles(frame)) {
        EXPECT_THAT(Outline(picture, vehicle.box, 0), testing::ElementsAre(Body(vehicle)));
        EXPECT_THAT(Outline(picture, vehicle.box, -1), testing::Not(testing::Contains(Body(vehicle))));
      }
    }
  }
}

TEST(RoadScene, VehiclesNeverOverlapAndStayInView) {
  for (const Size& size : kSizes) {
    const RoadScene scene(size.width, size.height);
    for (int64_t frame = 0; frame < 3000; ++frame) {
      const auto vehicles = scene.Vehicles(frame);
      for (size_t i = 0; i < vehicles.size(); ++i) {
        const PixelBox& a = vehicles[i].box;
        ASSERT_TRUE(a.left < a.right && a.top < a.bottom) << "frame " << frame << " vehicle " << i;
        for (size_t j = 0; j < i; ++j) {
          const PixelBox& b = vehicles[j].box;
          ASSERT_TRUE(a.right <= b.left || b.right <= a.left || a.bottom <= b.top || b.bottom <= a.top)
              << "frame " << frame << " vehicles " << i << " and " << j;
        }
      }
    }
  }
}

TEST(RoadScene, TinySizesAreDrawnAndOddOnesRefused) {
  for (const Size& size : {Size{2, 2}, Size{2, 64}, Size{64, 2}, Size{16, 16}}) {
    const RoadScene scene(size.width, size.height);
    Picture picture(size.width, size.height);
    for (const int64_t frame : kFrames)
      scene.Draw(frame, picture);
  }
  EXPECT_THROW(RoadScene(0, 2), std::invalid_argument);
  EXPECT_THROW(RoadScene(64, 63), std::invalid_argument);
  EXPECT_THROW(RoadScene(-2, 64), std::invalid_argument);
}

}  // namespace
