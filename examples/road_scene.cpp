// SPDX-License-Identifier: MIT
#include "road_scene.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <stdexcept>

namespace {

// Lengths in metres; lateral positions are measured from the camera, right is positive.
constexpr double kCameraHeight = 2.0;
constexpr double kMetresPerFrame = 0.8;
constexpr double kDashPeriod = 12.0;
constexpr double kDashLength = 4.0;
constexpr double kMarkHalfWidth = 0.09;
constexpr double kRoadLeft = -9.6;
constexpr double kRoadRight = 5.9;
constexpr double kFarthestMark = 160.0;

constexpr YuvColour kGrass{96, 112, 116};
constexpr YuvColour kAsphalt{84, 128, 128};
constexpr YuvColour kWindow{40, 134, 124};
constexpr YuvColour kTailLight{92, 100, 210};
constexpr YuvColour kHill{120, 128, 112};
constexpr uint8_t kMarkLuma = 225;

struct LaneLine {
  double lateral;
  bool solid;
};
constexpr LaneLine kLaneLines[] = {{-9.2, true}, {-5.25, true}, {-1.75, false}, {1.75, false}, {5.25, true}};

/// The distance swings around `middle`. The spans of distance keep the boxes of different lanes apart.
struct VehiclePlan {
  uint16_t classId;
  double lateral, width, height;
  double middle, swing, periodFrames;
  YuvColour body;
};
constexpr VehiclePlan kPlans[RoadScene::kVehicles] = {
    {5, -7.5, 2.0, 2.3, 75, 15, 500, {190, 120, 132}},  // minibus
    {2, 0.0, 1.8, 1.5, 22, 6, 300, {70, 170, 100}},     // car
    {3, -3.5, 2.5, 3.2, 13, 2, 360, {150, 60, 150}},    // bus
    {4, 3.5, 2.5, 3.6, 15, 4, 420, {110, 110, 170}},    // truck
};

YuvColour SkyAt(int row, int horizon) {
  const int share = horizon > 0 ? 100 * row / horizon : 0;
  return {static_cast<uint8_t>(140 + 60 * share / 100), static_cast<uint8_t>(154 - 18 * share / 100),
          static_cast<uint8_t>(108 + 14 * share / 100)};
}

/// Everything but the outermost two pixels of the box, which stay in the body's colour.
void PaintRear(Picture& picture, const PixelBox& box) {
  const int width = box.right - box.left;
  const int height = box.bottom - box.top;
  if (width < 12 || height < 12) return;
  const auto column = [&](double share) { return SnapEven(box.left + width * share); };
  const auto row = [&](double share) { return SnapEven(box.top + height * share); };
  FillBox(picture, {column(0.2), std::max(row(0.15), box.top + 2), column(0.82), row(0.45)}, kWindow);
  FillBox(picture, {std::max(column(0.08), box.left + 2), row(0.6), column(0.22), row(0.7)}, kTailLight);
  FillBox(picture, {column(0.78), row(0.6), std::min(column(0.92), box.right - 2), row(0.7)}, kTailLight);
}

int CheckedEven(int value) {
  if (value < 2 || value % 2 != 0) throw std::invalid_argument("the scene needs an even size");
  return value;
}

}  // namespace

RoadScene::RoadScene(int width, int height)
    : m_focal(0.9 * std::min<double>(width, height * 16 / 9.0)),
      m_horizon(SnapEven(height * 0.42)),
      m_background(CheckedEven(width), CheckedEven(height)) {
  PaintBackground();
}

double RoadScene::ColumnOf(double lateral, double distance) const {
  return Width() / 2.0 + m_focal * lateral / distance;
}

double RoadScene::RowOf(double heightAboveRoad, double distance) const {
  return m_horizon + m_focal * (kCameraHeight - heightAboveRoad) / distance;
}

void RoadScene::PaintBackground() {
  for (int row = 0; row < m_horizon; row += 2)
    FillBox(m_background, {0, row, Width(), row + 2}, SkyAt(row, m_horizon));
  FillEllipse(m_background, Width() * 0.2, m_horizon, Width() * 0.35, Height() * 0.07, kHill);
  FillEllipse(m_background, Width() * 0.85, m_horizon, Width() * 0.3, Height() * 0.05, kHill);
  FillBox(m_background, {0, m_horizon, Width(), Height()}, kGrass);
  for (int row = m_horizon; row < Height(); row += 2) {
    const double distance = m_focal * kCameraHeight / (row + 1 - m_horizon);
    FillBox(m_background,
            {SnapEven(ColumnOf(kRoadLeft, distance)), row, SnapEven(ColumnOf(kRoadRight, distance)), row + 2},
            kAsphalt);
  }
}

std::array<SceneVehicle, RoadScene::kVehicles> RoadScene::Vehicles(int64_t frame) const {
  std::array<SceneVehicle, kVehicles> vehicles{};
  for (size_t i = 0; i < kVehicles; ++i) {
    const VehiclePlan& plan = kPlans[i];
    const double turn =
        2 * std::numbers::pi * std::fmod(static_cast<double>(frame), plan.periodFrames) / plan.periodFrames;
    const double distance = plan.middle + plan.swing * std::sin(turn + static_cast<double>(i));
    const PixelBox box{
        SnapEven(ColumnOf(plan.lateral - plan.width / 2, distance)), SnapEven(RowOf(plan.height, distance)),
        SnapEven(ColumnOf(plan.lateral + plan.width / 2, distance)), SnapEven(RowOf(0, distance))};
    vehicles[i] = {ClipTo(m_background, box), plan.classId, distance, plan.body};
  }
  return vehicles;
}

/// White and asphalt are both neutral, so the marks only touch luma.
void RoadScene::PaintLaneMarks(int64_t frame, Picture& picture) const {
  const double travelled = std::fmod(static_cast<double>(frame) * kMetresPerFrame, kDashPeriod);
  for (int row = m_horizon; row < Height(); ++row) {
    const double distance = m_focal * kCameraHeight / (row + 0.5 - m_horizon);
    if (distance > kFarthestMark) continue;
    const bool dash = std::fmod(distance + travelled, kDashPeriod) < kDashLength;
    for (const LaneLine& line : kLaneLines) {
      if (!line.solid && !dash) continue;
      const int left = std::max(0, static_cast<int>(ColumnOf(line.lateral - kMarkHalfWidth, distance)));
      const int right =
          std::min(Width(), static_cast<int>(ColumnOf(line.lateral + kMarkHalfWidth, distance)) + 1);
      if (left < right)
        std::fill_n(picture.y.begin() + static_cast<ptrdiff_t>(row) * Width() + left, right - left,
                    kMarkLuma);
    }
  }
}

void RoadScene::Draw(int64_t frame, Picture& picture) const {
  std::copy(m_background.y.begin(), m_background.y.end(), picture.y.begin());
  std::copy(m_background.u.begin(), m_background.u.end(), picture.u.begin());
  std::copy(m_background.v.begin(), m_background.v.end(), picture.v.begin());
  PaintLaneMarks(frame, picture);
  for (const SceneVehicle& vehicle : Vehicles(frame)) {
    FillBox(picture, vehicle.box, vehicle.body);
    PaintRear(picture, vehicle.box);
  }
}
