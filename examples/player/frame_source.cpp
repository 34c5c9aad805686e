// SPDX-License-Identifier: MIT
#include "player/frame_source.h"

#include <fstream>

#include "driver_scene.h"
#include "media_error.h"
#include "road_scene.h"
#include "y4m.h"

namespace {

/// A file and its reader, which a base class needs before it exists.
struct OpenClip {
  explicit OpenClip(const std::string& path) : file(path, std::ios::binary), reader(Checked()) {
    if (reader.CountFrames() == 0) throw MediaError("the clip has no frames");
  }

  std::istream& Checked() {
    if (!file) throw MediaError("the file cannot be opened");
    return file;
  }

  std::ifstream file;
  Y4mReader reader;
};

class Y4mSource : public FrameSource {
 public:
  Y4mSource(const std::string& path, std::unique_ptr<OpenClip> clip)
      : FrameSource(clip->reader.Format().width, clip->reader.Format().height),
        m_path(path),
        m_clip(std::move(clip)) {}

  double FramesPerSecond() const override { return m_clip->reader.Format().framesPerSecond; }

 private:
  bool Read(int64_t, Picture& picture) override try {
    return m_clip->reader.Read(picture);
  } catch (const MediaError& error) {
    throw MediaError(m_path + ": " + error.what());
  }
  void Restart() override { m_clip->reader.Rewind(); }

  std::string m_path;
  std::unique_ptr<OpenClip> m_clip;
};

template <class Scene>
class SceneSource : public FrameSource {
 public:
  SceneSource(int width, int height) : FrameSource(width, height), m_scene(width, height) {}
  double FramesPerSecond() const override { return RoadScene::kFramesPerSecond; }

 private:
  bool Read(int64_t frame, Picture& picture) override {
    m_scene.Draw(frame, picture);
    return true;
  }

  Scene m_scene;
};

}  // namespace

bool FrameSource::Next() {
  if (!Read(m_frame + 1, m_picture)) return false;
  ++m_frame;
  return true;
}

void FrameSource::Rewind() {
  Restart();
  m_frame = -1;
}

void FrameSource::Seek(int64_t frame) {
  while (m_frame < frame && Next()) {
  }
}

std::unique_ptr<FrameSource> OpenY4mFile(const std::string& path) try {
  return std::make_unique<Y4mSource>(path, std::make_unique<OpenClip>(path));
} catch (const MediaError& error) {
  throw MediaError(path + ": " + error.what());
}

std::unique_ptr<FrameSource> MakeRoadSource(int width, int height) {
  return std::make_unique<SceneSource<RoadScene>>(width, height);
}

std::unique_ptr<FrameSource> MakeDriverSource(int width, int height) {
  return std::make_unique<SceneSource<DriverScene>>(width, height);
}
