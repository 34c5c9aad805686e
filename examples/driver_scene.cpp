// SPDX-License-Identifier: MIT
#include "driver_scene.h"

#include <cmath>
#include <numbers>

namespace {

constexpr YuvColour kCabin{48, 132, 124};
constexpr YuvColour kShirt{70, 150, 112};
constexpr YuvColour kSkin{168, 108, 150};
constexpr YuvColour kHair{40, 124, 134};
constexpr YuvColour kEye{225, 128, 128};
constexpr YuvColour kPupil{28, 128, 128};
constexpr YuvColour kMouth{96, 116, 170};

// Places inside the face: the head's ellipse has radius 1, x to the right, y down.
constexpr double kEyeX = 0.42, kEyeY = -0.2, kMouthY = 0.55;

struct Arc {
  int points;
  double x, y, radiusX, radiusY;
  double firstTurn, lastTurn;  ///< share of a full turn, clockwise from the right
};
// The usual order of 68 landmarks: jaw, brows, nose ridge and base, eyes, outer and inner lips.
constexpr Arc kArcs[] = {
    {17, 0, 0, 1, 1, 0.5, 0},
    {5, -kEyeX, -0.3, 0.28, 0.16, 0.5, 1},
    {5, kEyeX, -0.3, 0.28, 0.16, 0.5, 1},
    {4, 0, -0.05, 0, 0.2, 0.75, 0.25},
    {5, 0, 0.2, 0.16, 0.06, 0.5, 0},
    {6, -kEyeX, kEyeY, 0.18, 0.08, 0.5, 0.5 + 5 / 6.0},
    {6, kEyeX, kEyeY, 0.18, 0.08, 0.5, 0.5 + 5 / 6.0},
    {12, 0, kMouthY, 0.34, 0.15, 0.5, 0.5 + 11 / 12.0},
    {8, 0, kMouthY, 0.26, 0.06, 0.5, 0.5 + 7 / 8.0},
};

}  // namespace

DriverScene::Head DriverScene::HeadAt(int64_t frame) const {
  const double turn = 2 * std::numbers::pi * std::fmod(static_cast<double>(frame), 200.0) / 200.0;
  return {m_width * (0.5 + 0.06 * std::sin(turn)), m_height * (0.48 + 0.02 * std::sin(2 * turn)),
          m_height * 0.22, m_height * 0.3};
}

DriverScene::Face DriverScene::FaceAt(int64_t frame) const {
  const Head head = HeadAt(frame);
  Face face{};
  size_t n = 0;
  for (const Arc& arc : kArcs) {
    for (int i = 0; i < arc.points; ++i, ++n) {
      const double share = arc.firstTurn + (arc.lastTurn - arc.firstTurn) * i / (arc.points - 1);
      const double angle = 2 * std::numbers::pi * share;
      face.x[n] = static_cast<float>(head.x + head.radiusX * (arc.x + arc.radiusX * std::cos(angle)));
      face.y[n] = static_cast<float>(head.y + head.radiusY * (arc.y + arc.radiusY * std::sin(angle)));
    }
  }
  face.box = {SnapEven(head.x - head.radiusX), SnapEven(head.y - head.radiusY),
              SnapEven(head.x + head.radiusX), SnapEven(head.y + head.radiusY)};
  return face;
}

void DriverScene::Draw(int64_t frame, Picture& picture) const {
  const Head head = HeadAt(frame);
  FillBox(picture, {0, 0, m_width, m_height}, kCabin);
  FillEllipse(picture, m_width * 0.5, m_height * 1.1, m_height * 0.5, m_height * 0.4, kShirt);
  FillEllipse(picture, head.x, head.y - head.radiusY * 0.12, head.radiusX * 1.08, head.radiusY * 1.02, kHair);
  FillEllipse(picture, head.x, head.y + head.radiusY * 0.1, head.radiusX * 0.96, head.radiusY * 0.9, kSkin);
  for (const double side : {-1.0, 1.0}) {
    const double x = head.x + side * kEyeX * head.radiusX;
    const double y = head.y + kEyeY * head.radiusY;
    FillEllipse(picture, x, y, head.radiusX * 0.18, head.radiusY * 0.08, kEye);
    FillEllipse(picture, x, y, head.radiusX * 0.07, head.radiusY * 0.06, kPupil);
  }
  FillEllipse(picture, head.x, head.y + kMouthY * head.radiusY, head.radiusX * 0.34, head.radiusY * 0.1,
              kMouth);
}
