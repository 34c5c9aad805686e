// SPDX-License-Identifier: MIT
// Of a player without FFmpeg's libraries, which shows drawn scenes only.
#include "media_error.h"
#include "player/media/frame_source.h"
#include "player/media/sound_source.h"

namespace {

[[noreturn]] void Refuse(const std::string& path) {
  throw MediaError(path + ": this player was built without FFmpeg, which reads recordings");
}

}  // namespace

std::unique_ptr<FrameSource> OpenClip(const std::string& path, int) {
  Refuse(path);
}

std::unique_ptr<SoundSource> OpenSound(const std::string& path) {
  Refuse(path);
}
