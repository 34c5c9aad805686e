// SPDX-License-Identifier: MIT
#include "player/overlays.h"

#include <array>
#include <bit>
#include <cstdio>

#include "driver_scene.h"
#include "nivral/nivral.h"
#include "player/frame_source.h"
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
  Texts(std::string channel, double framesPerSecond, const std::atomic<bool>& enabled)
      : m_channel(std::move(channel)), m_framesPerSecond(framesPerSecond), m_enabled(enabled) {}

  void Prepare(void* handle, int64_t frame) override {
    const bool enabled = m_enabled;
    NIVRAL_DWSetOSDText(handle, 0, enabled ? m_channel.c_str() : "", 16, 12, 0, kYellow);
    NIVRAL_DWSetOSDText(handle, 1, enabled ? TimeStamp(frame).c_str() : "", 16, 60, kFromBottom, kWhite);
  }

 private:
  std::string TimeStamp(int64_t frame) const {
    const auto seconds = static_cast<int64_t>(static_cast<double>(frame) / m_framesPerSecond);
    char text[64];
    std::snprintf(text, sizeof(text), "2024-05-17 %02d:%02d:%02d", static_cast<int>(8 + seconds / 3600 % 12),
                  static_cast<int>(seconds / 60 % 60), static_cast<int>(seconds % 60));
    return text;
  }

  std::string m_channel;
  double m_framesPerSecond;
  const std::atomic<bool>& m_enabled;
};

class RoadOverlays : public Overlays {
 public:
  RoadOverlays(const Options& options, const std::atomic<bool>& enabled)
      : m_texts(options.channel, RoadScene::kFramesPerSecond, enabled),
        m_scene(options.width, options.height),
        m_distanceUnits(options.backend == Backend::kDirectDraw ? 1 : 10),
        m_enabled(enabled) {}

  void Prepare(void* handle, int64_t frame) override {
    m_texts.Prepare(handle, frame);
    if (m_enabled) SendBoxes(handle, frame);
  }

 private:
  void SendBoxes(void* handle, int64_t frame) {
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
      distance[i] = static_cast<uint16_t>(vehicles[i].distanceMetres * m_distanceUnits);
    }
    NIVRAL_DWSetAlgInfo(handle, n, left.data(), top.data(), right.data(), bottom.data(), classId.data(),
                        distance.data(), unused.data(), unused.data(), kLineWidth);
  }

  Texts m_texts;
  RoadScene m_scene;
  int m_distanceUnits;  ///< per metre: the DirectDraw backend reads whole metres, the others tenths
  const std::atomic<bool>& m_enabled;
};

class DriverOverlays : public Overlays {
 public:
  DriverOverlays(int width, int height, const std::atomic<bool>& enabled)
      : m_scene(width, height), m_enabled(enabled) {}

  void Prepare(void* handle, int64_t frame) override {
    const bool enabled = m_enabled;
    NIVRAL_DWSetOSDText(handle, 0, enabled ? "Driver" : "", 16, 12, 0, kYellow);
    if (!enabled) return;
    const DriverScene::Face face = m_scene.FaceAt(frame);
    std::array<uint32_t, DriverScene::kLandmarks> x, y;
    for (size_t i = 0; i < x.size(); ++i) {
      x[i] = Bits(face.x[i]);
      y[i] = Bits(face.y[i]);
    }
    const uint32_t left = Bits(face.box.left), top = Bits(face.box.top);
    const uint32_t right = Bits(face.box.right), bottom = Bits(face.box.bottom);
    NIVRAL_DWSetDsmAlgInfo(handle, static_cast<int32_t>(x.size()), x.data(), y.data(), 1, &left, &top, &right,
                           &bottom, kLandmarkRadius);
  }

 private:
  DriverScene m_scene;
  const std::atomic<bool>& m_enabled;
};

}  // namespace

std::unique_ptr<Overlays> MakeTexts(std::string channel, double framesPerSecond,
                                    const std::atomic<bool>& enabled) {
  return std::make_unique<Texts>(std::move(channel), framesPerSecond, enabled);
}

std::unique_ptr<Overlays> MakeRoadOverlays(const Options& options, const std::atomic<bool>& enabled) {
  return std::make_unique<RoadOverlays>(options, enabled);
}

std::unique_ptr<Overlays> MakeDriverOverlays(int width, int height, const std::atomic<bool>& enabled) {
  return std::make_unique<DriverOverlays>(width, height, enabled);
}
