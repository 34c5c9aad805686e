// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <memory>
#include <string>

#include "player/frame_source.h"
#include "player/layout.h"
#include "player/options.h"
#include "player/overlays.h"

enum class ChannelKind { kClip, kRoad, kDriver };

/// What one pane shows. Outlives the pane, which goes and comes with its backend.
struct Channel {
  ChannelKind kind = ChannelKind::kClip;
  std::string name;
  std::unique_ptr<FrameSource> source;
  PictureSettings picture;

  PixelSize Size() const { return {source->Current().width, source->Current().height}; }
  std::unique_ptr<Overlays> MakeOverlays(const OverlaySwitches& switches) const;
};

/// The pane with number `index` of a player without clips: road scenes and driver scenes in turn.
Channel OpenScene(const Options& options, int index);

/// The clips, or the scenes that the options ask for. Throws MediaError.
std::deque<Channel> OpenChannels(const Options& options);
