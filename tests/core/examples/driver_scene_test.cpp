// SPDX-License-Identifier: MIT
#include "driver_scene.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace {

TEST(DriverScene, LandmarksLieInTheFaceBoxAndOnItsFeatures) {
  const DriverScene scene(640, 480);
  Picture picture(640, 480);
  const auto lumaAt = [&](float x, float y) {
    return picture.y[static_cast<size_t>(static_cast<int>(y) * 640 + static_cast<int>(x))];
  };
  for (const int64_t frame : {0, 50, 123, 100'000}) {
    scene.Draw(frame, picture);
    const DriverScene::Face face = scene.FaceAt(frame);
    for (size_t i = 0; i < DriverScene::kLandmarks; ++i) {
      EXPECT_GE(face.x[i], static_cast<float>(face.box.left)) << i;
      EXPECT_LE(face.x[i], static_cast<float>(face.box.right + 2)) << i;
      EXPECT_GE(face.y[i], static_cast<float>(face.box.top)) << i;
      EXPECT_LE(face.y[i], static_cast<float>(face.box.bottom + 2)) << i;
    }
    // Landmarks 36 and 39 are the outer and inner corner of an eye: its middle is the dark pupil.
    EXPECT_LT(lumaAt((face.x[36] + face.x[39]) / 2, face.y[36]), 60);
    // 48 and 54 are the corners of the mouth; the nose's tip, 30, is skin.
    EXPECT_LT(lumaAt((face.x[48] + face.x[54]) / 2, face.y[48]), 120);
    EXPECT_GT(lumaAt(face.x[30], face.y[30]), 140);
  }
}

TEST(DriverScene, TinySizesAreDrawn) {
  const DriverScene scene(2, 2);
  Picture picture(2, 2);
  scene.Draw(3, picture);
  EXPECT_THAT(picture.y, testing::Not(testing::Contains(0)));
}

}  // namespace
