// SPDX-License-Identifier: MIT
#include "audio/playback_fill.h"

#include <algorithm>

namespace libnivral {
namespace {

/// Sum of the client's answers; 64 bits because each answer may be anything.
int64_t PullUntilFull(std::span<uint8_t> buffer, SampleSource& source) {
  const auto size = static_cast<int64_t>(buffer.size());
  int64_t total = 0;
  while (total < size && !source.Stopped()) {
    const std::optional<int> written = source.Pull(buffer);
    if (!written) break;
    if (*written > 0) {
      total += *written;
    } else {
      source.YieldThread();
    }
  }
  return total;
}

}  // namespace

void FillPlaybackBuffer(std::span<uint8_t> buffer, bool paused, SampleSource& source) {
  if (paused || PullUntilFull(buffer, source) <= 0) std::ranges::fill(buffer, uint8_t{0});
}

}  // namespace libnivral
