// SPDX-License-Identifier: MIT
#include "player/channel.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <thread>

#include "driver_scene.h"
#include "media_error.h"
#include "player/windows/text.h"
#include "road_scene.h"

namespace {

constexpr PixelSize kDriverSize{720, 540};
constexpr PixelSize kFurtherRoadSize{640, 360};

RecordBox BoxOf(const PixelBox& box) {
  return {static_cast<float>(box.left), static_cast<float>(box.top), static_cast<float>(box.right),
          static_cast<float>(box.bottom)};
}

Record RoadRecord(const RoadScene& scene, int64_t frame) {
  Record record;
  for (const SceneVehicle& vehicle : scene.Vehicles(frame))
    record.objects.push_back(
        {BoxOf(vehicle.box), vehicle.classId, static_cast<uint16_t>(vehicle.distanceMetres * 10)});
  return record;
}

Record DriverRecord(const DriverScene& scene, int64_t frame) {
  const DriverScene::Face face = scene.FaceAt(frame);
  Record record;
  record.faces.push_back(BoxOf(face.box));
  for (size_t i = 0; i < face.x.size(); ++i)
    record.landmarks.push_back({face.x[i], face.y[i]});
  return record;
}

Channel MakeChannel(const Options& options, int index, std::string name,
                    std::unique_ptr<FrameSource> source) {
  Channel channel;
  channel.name = index == 0 && !options.channel.empty() ? options.channel : std::move(name);
  channel.source = std::move(source);
  channel.picture = options.picture;
  if (index > 0) channel.picture.mosaicLevel.reset();  // it is for the first picture
  channel.first = channel.source->Next(0, true);
  return channel;
}

Channel DriverChannel(const Options& options, int index, int64_t first) {
  Channel channel =
      MakeChannel(options, index, "Driver", MakeDriverSource(kDriverSize.width, kDriverSize.height, first));
  channel.find = [scene = DriverScene(kDriverSize.width, kDriverSize.height)](const Frame& frame) {
    return DriverRecord(scene, frame.number);
  };
  return channel;
}

Channel RoadChannel(const Options& options, int index, int64_t first) {
  const PixelSize size = index == 0 ? PixelSize{options.width, options.height} : kFurtherRoadSize;
  Channel channel = MakeChannel(options, index, "Camera " + std::to_string(index + 1),
                                MakeRoadSource(size.width, size.height, first));
  channel.find = [scene = RoadScene(size.width, size.height)](const Frame& frame) {
    return RoadRecord(scene, frame.number);
  };
  return channel;
}

/// The file that the options name for the first clip, or the one beside a clip.
std::string RecordsPath(const Options& options, int index, const std::string& clip) {
  if (index == 0 && !options.records.empty()) return options.records;
  std::error_code none;
  return std::filesystem::exists(Wide(clip + ".csv"), none) ? clip + ".csv" : "";
}

Channel ClipChannel(const Options& options, int index, const std::string& path, int threads) {
  Channel channel = MakeChannel(options, index, Utf8(std::filesystem::path(Wide(path)).filename().wstring()),
                                OpenClip(path, threads));
  if (!channel.first) throw MediaError(path + ": no picture can be decoded");
  channel.path = path;
  if (const std::string records = RecordsPath(options, index, path); !records.empty()) {
    const auto track = std::make_shared<const RecordTrack>(OpenRecords(records));
    channel.find = [track, rate = channel.source->FramesPerSecond()](const Frame& frame) {
      return track->At(frame.number, frame.time, rate);
    };
  }
  return channel;
}

}  // namespace

std::unique_ptr<Overlays> Channel::MakeOverlays(const OverlaySwitches& switches) const {
  return std::make_unique<Overlays>(Overlays::Content{Ansi(name), source->RecordedAt(), find}, switches);
}

Channel OpenScene(const Options& options, int index) {
  constexpr int64_t kFramesBetween = 60;
  return index % 2 == 0 ? RoadChannel(options, index, kFramesBetween * index)
                        : DriverChannel(options, index, kFramesBetween * index);
}

Media OpenMedia(const Options& options) {
  Media media;
  const auto cores = std::max(1u, std::thread::hardware_concurrency());
  const int threads =
      static_cast<int>(std::clamp<size_t>(cores / std::max<size_t>(options.files.size(), 1), 1, 8));
  for (const std::string& path : options.files) {
    try {
      media.channels.push_back(ClipChannel(options, static_cast<int>(media.channels.size()), path, threads));
    } catch (const NoPictures&) {
      media.soundPath = path;
    }
  }
  if (media.channels.size() > kMostPanes) throw MediaError("at most 16 clips can be shown");
  const int clips = static_cast<int>(media.channels.size());
  if (clips > 0 && options.monitor) media.channels.push_back(DriverChannel(options, clips, 0));
  if (clips > 0) return media;
  const int scenes = std::max(options.panes, options.monitor ? 2 : 1);
  for (int i = 0; i < scenes; ++i)
    media.channels.push_back(OpenScene(options, i));
  return media;
}

void WriteRoadRecords(const Options& options) {
  constexpr int64_t kFrames = 10 * RoadScene::kFramesPerSecond;
  const RoadScene scene(options.width, options.height);
  std::ofstream csv(std::filesystem::path(Wide(options.writeRecords)), std::ios::binary);
  WriteRecordsHeader(csv);
  for (int64_t frame = 0; frame < kFrames; ++frame)
    WriteRecord(csv, frame, RoadRecord(scene, frame));
  if (!csv.flush()) throw MediaError(options.writeRecords + ": the file could not be written");
}
