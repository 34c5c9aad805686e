// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <memory>
#include <string>

#include "player/embed/overlays.h"
#include "player/media/frame_source.h"
#include "player/options.h"
#include "player/windows/layout.h"

/// What one pane shows. Outlives the pane, which goes and comes with its backend.
struct Channel {
  std::string path;  ///< empty: a drawn scene
  std::string name;
  std::unique_ptr<FrameSource> source;
  Frame first;
  PictureSettings picture;
  Overlays::FindRecord find;  ///< null: no records

  bool IsClip() const { return !path.empty(); }
  std::unique_ptr<Overlays> MakeOverlays(const OverlaySwitches& switches) const;
};

/// The pane with number `index` of a player without clips: road scenes and driver scenes in turn.
Channel OpenScene(const Options& options, int index);

struct Media {
  std::deque<Channel> channels;
  std::string soundPath;  ///< of a file that has only sound; empty: none
};

/// The files, or the scenes that the options ask for. Throws MediaError.
Media OpenMedia(const Options& options);

/// Writes the drawn road's records as an example of such a file. Throws MediaError.
void WriteRoadRecords(const Options& options);
