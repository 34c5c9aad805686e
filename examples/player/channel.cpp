// SPDX-License-Identifier: MIT
#include "player/channel.h"

#include <algorithm>

#include "road_scene.h"

namespace {

constexpr PixelSize kDriverSize{720, 540};
constexpr PixelSize kFurtherRoadSize{640, 360};

std::string Name(const Options& options, int index) {
  if (index == 0 && !options.channel.empty()) return options.channel;
  return "Camera " + std::to_string(index + 1);
}

Channel MakeChannel(const Options& options, int index, ChannelKind kind,
                    std::unique_ptr<FrameSource> source) {
  Channel channel;
  channel.kind = kind;
  channel.name = kind == ChannelKind::kDriver ? "Driver" : Name(options, index);
  channel.source = std::move(source);
  channel.picture = options.picture;
  if (index > 0) channel.picture.mosaicLevel.reset();  // it is for the first picture
  return channel;
}

Channel DriverChannel(const Options& options, int index) {
  return MakeChannel(options, index, ChannelKind::kDriver,
                     MakeDriverSource(kDriverSize.width, kDriverSize.height));
}

Channel RoadChannel(const Options& options, int index) {
  const PixelSize size = index == 0 ? PixelSize{options.width, options.height} : kFurtherRoadSize;
  return MakeChannel(options, index, ChannelKind::kRoad, MakeRoadSource(size.width, size.height));
}

std::deque<Channel> OpenClips(const Options& options) {
  std::deque<Channel> channels;
  for (const std::string& clip : options.clips) {
    channels.push_back(
        MakeChannel(options, static_cast<int>(channels.size()), ChannelKind::kClip, OpenY4mFile(clip)));
    if (options.holdAt) channels.back().source->Seek(*options.holdAt);
  }
  return channels;
}

}  // namespace

std::unique_ptr<Overlays> Channel::MakeOverlays(const OverlaySwitches& switches) const {
  switch (kind) {
    case ChannelKind::kRoad:
      return MakeRoadOverlays(name, Size(), switches);
    case ChannelKind::kDriver:
      return MakeDriverOverlays(name, Size(), switches);
    default:
      return MakeTexts(name, source->FramesPerSecond(), switches);
  }
}

Channel OpenScene(const Options& options, int index) {
  constexpr int kFramesBetween = 60;
  Channel channel = index % 2 == 0 ? RoadChannel(options, index) : DriverChannel(options, index);
  channel.source->Seek(options.holdAt.value_or(0) + int64_t{kFramesBetween} * index);
  return channel;
}

std::deque<Channel> OpenChannels(const Options& options) {
  std::deque<Channel> channels = OpenClips(options);
  if (!channels.empty()) {
    if (options.monitor) channels.push_back(DriverChannel(options, static_cast<int>(channels.size())));
    return channels;
  }
  const int scenes = std::max(options.panes, options.monitor ? 2 : 1);
  for (int i = 0; i < scenes; ++i)
    channels.push_back(OpenScene(options, i));
  return channels;
}
