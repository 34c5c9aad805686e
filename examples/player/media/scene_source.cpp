// SPDX-License-Identifier: MIT
#include <algorithm>

#include "driver_scene.h"
#include "player/media/frame_source.h"
#include "road_scene.h"

namespace {

template <class Scene>
class SceneSource : public FrameSource {
 public:
  SceneSource(int width, int height, int64_t first) : m_scene(width, height), m_first(first) {}

  Frame Next(double wanted, bool exact) override {
    if (!exact) Skip(wanted);
    auto picture = std::make_shared<Picture>(m_scene.Width(), m_scene.Height());
    m_scene.Draw(m_first + m_next, *picture);
    Frame frame{picture->y.data(),
                picture->u.data(),
                picture->v.data(),
                static_cast<uint32_t>(picture->width),
                static_cast<uint32_t>(picture->strideUV),
                picture->width,
                picture->height,
                static_cast<double>(m_next) / RoadScene::kFramesPerSecond,
                1.0 / RoadScene::kFramesPerSecond,
                m_first + m_next,
                nullptr};
    frame.owner = std::move(picture);
    ++m_next;
    return frame;
  }

  void Seek(double seconds) override {
    m_next = std::max<int64_t>(0, static_cast<int64_t>(seconds * RoadScene::kFramesPerSecond));
  }
  double FramesPerSecond() const override { return RoadScene::kFramesPerSecond; }

 private:
  /// Drawing late frames would make the others late, too.
  void Skip(double wanted) {
    const auto due = static_cast<int64_t>(wanted * RoadScene::kFramesPerSecond);
    if (due > m_next + 1) m_next = due;
  }

  Scene m_scene;
  int64_t m_first;
  int64_t m_next = 0;
};

}  // namespace

std::unique_ptr<FrameSource> MakeRoadSource(int width, int height, int64_t first) {
  return std::make_unique<SceneSource<RoadScene>>(width, height, first);
}

std::unique_ptr<FrameSource> MakeDriverSource(int width, int height, int64_t first) {
  return std::make_unique<SceneSource<DriverScene>>(width, height, first);
}
