// SPDX-License-Identifier: MIT
// A driver's view of a motorway, drawn by number of frame, so that overlays have ground truth.
#pragma once

#include <array>

#include "paint.h"

struct SceneVehicle {
  PixelBox box;           ///< exactly the painted pixels
  uint16_t classId;       ///< as in NIVRAL_DWSetAlgInfo
  double distanceMetres;  ///< from the camera
  YuvColour body;         ///< colour of the outermost two pixels on every side
};

/// Every frame is a function of its number only. Boxes of different vehicles never overlap.
class RoadScene {
 public:
  static constexpr int kFramesPerSecond = 25;
  static constexpr size_t kVehicles = 4;

  /// Any even size. Throws std::invalid_argument for another.
  RoadScene(int width, int height);

  int Width() const { return m_background.width; }
  int Height() const { return m_background.height; }
  std::array<SceneVehicle, kVehicles> Vehicles(int64_t frame) const;

  /// `picture` has the scene's size.
  void Draw(int64_t frame, Picture& picture) const;

 private:
  double ColumnOf(double lateral, double distance) const;
  double RowOf(double heightAboveRoad, double distance) const;
  void PaintBackground();
  void PaintLaneMarks(int64_t frame, Picture& picture) const;

  double m_focal;  ///< focal length in pixels
  int m_horizon;   ///< row of the horizon
  Picture m_background;
};
