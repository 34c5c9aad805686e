// SPDX-License-Identifier: MIT
#include "player/overlays.h"

#include <array>
#include <bit>
#include <cstdio>

#include "driver_scene.h"
#include "player/frame_source.h"
#include "player/library.h"
#include "road_scene.h"

namespace {

constexpr uint32_t kYellow = 0x0000FFFF;
constexpr uint32_t kWhite = 0x00FFFFFF;
constexpr uint32_t kFromBottom = 1;
constexpr uint16_t kLineWidth = 2;
constexpr uint16_t kLandmarkRadius = 2;

/// Edges travel as the bits of 32-bit floats.
uint32_t Bits(double value) {
  return std::bit_cast<uint32_t>(static_cast<float>(value));
}

class Texts : public Overlays {
 public:
  Texts(std::string name, double framesPerSecond, const OverlaySwitches& switches)
      : m_name(std::move(name)), m_framesPerSecond(framesPerSecond), m_switches(switches) {}

  void SetTexts(void* handle, int64_t frame) override {
    const bool on = m_switches.texts;
    nivral.DWSetOSDText(handle, 0, on ? m_name.c_str() : "", 16, 12, 0, kYellow);
    nivral.DWSetOSDText(handle, 1, on ? TimeStamp(frame).c_str() : "", 16, 60, kFromBottom, kWhite);
  }

 private:
  std::string TimeStamp(int64_t frame) const {
    const auto seconds = static_cast<int64_t>(static_cast<double>(frame) / m_framesPerSecond);
    char text[64];
    std::snprintf(text, sizeof(text), "2024-05-17 %02d:%02d:%02d", static_cast<int>(8 + seconds / 3600 % 12),
                  static_cast<int>(seconds / 60 % 60), static_cast<int>(seconds % 60));
    return text;
  }

  std::string m_name;
  double m_framesPerSecond;
  const OverlaySwitches& m_switches;
};

class RoadOverlays : public Overlays {
 public:
  RoadOverlays(std::string name, PixelSize size, const OverlaySwitches& switches)
      : m_texts(std::move(name), RoadScene::kFramesPerSecond, switches),
        m_scene(size.width, size.height),
        m_switches(switches) {}

  void SetTexts(void* handle, int64_t frame) override { m_texts.SetTexts(handle, frame); }
  bool HasRecords() const override { return m_switches.assistance; }
  void SendRecord(void* handle, int64_t frame) override {
    constexpr size_t n = RoadScene::kVehicles;
    std::array<uint32_t, n> left, top, right, bottom;
    std::array<uint16_t, n> classId, distance;
    constexpr std::array<uint16_t, n> unused{};
    const auto vehicles = m_scene.Vehicles(frame);
    for (size_t i = 0; i < n; ++i) {
      left[i] = Bits(vehicles[i].box.left);
      top[i] = Bits(vehicles[i].box.top);
      right[i] = Bits(vehicles[i].box.right);
      bottom[i] = Bits(vehicles[i].box.bottom);
      classId[i] = vehicles[i].classId;
      distance[i] = static_cast<uint16_t>(vehicles[i].distanceMetres * kDistanceUnits);
    }
    nivral.DWSetAlgInfo(handle, n, left.data(), top.data(), right.data(), bottom.data(), classId.data(),
                        distance.data(), unused.data(), unused.data(), kLineWidth);
  }

 private:
  Texts m_texts;
  RoadScene m_scene;
  static constexpr int kDistanceUnits = 10;  ///< per metre
  const OverlaySwitches& m_switches;
};

class DriverOverlays : public Overlays {
 public:
  DriverOverlays(std::string name, PixelSize size, const OverlaySwitches& switches)
      : m_texts(std::move(name), RoadScene::kFramesPerSecond, switches),
        m_scene(size.width, size.height),
        m_switches(switches) {}

  void SetTexts(void* handle, int64_t frame) override { m_texts.SetTexts(handle, frame); }
  bool HasRecords() const override { return m_switches.monitoring; }
  void SendRecord(void* handle, int64_t frame) override {
    const DriverScene::Face face = m_scene.FaceAt(frame);
    std::array<uint32_t, DriverScene::kLandmarks> x, y;
    for (size_t i = 0; i < x.size(); ++i) {
      x[i] = Bits(face.x[i]);
      y[i] = Bits(face.y[i]);
    }
    const uint32_t left = Bits(face.box.left), top = Bits(face.box.top);
    const uint32_t right = Bits(face.box.right), bottom = Bits(face.box.bottom);
    nivral.DWSetDsmAlgInfo(handle, static_cast<int32_t>(x.size()), x.data(), y.data(), 1, &left, &top, &right,
                           &bottom, kLandmarkRadius);
  }

 private:
  Texts m_texts;
  DriverScene m_scene;
  const OverlaySwitches& m_switches;
};

}  // namespace

std::unique_ptr<Overlays> MakeTexts(std::string name, double framesPerSecond,
                                    const OverlaySwitches& switches) {
  return std::make_unique<Texts>(std::move(name), framesPerSecond, switches);
}

std::unique_ptr<Overlays> MakeRoadOverlays(std::string name, PixelSize size,
                                           const OverlaySwitches& switches) {
  return std::make_unique<RoadOverlays>(std::move(name), size, switches);
}

std::unique_ptr<Overlays> MakeDriverOverlays(std::string name, PixelSize size,
                                             const OverlaySwitches& switches) {
  return std::make_unique<DriverOverlays>(std::move(name), size, switches);
}
