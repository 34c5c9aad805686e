// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <span>

namespace libnivral {

/// What every playback buffer holds before the client's PCM: the level the device starts on.
constexpr uint8_t kInitialFill = 0x64;

/// Where playback buffers get their samples from.
class SampleSource {
 public:
  virtual ~SampleSource() = default;
  virtual bool Stopped() const = 0;
  /// Asks the client for a whole buffer. Bytes written, zero or less for "nothing yet"; none without a
  /// client.
  virtual std::optional<int> Pull(std::span<uint8_t> buffer) = 0;
  /// Lets other threads run while the client has nothing.
  virtual void YieldThread() = 0;
};

/// Fills one playback buffer: with zeros when paused, else from the source. Every request gets the buffer's
/// start and full size until the answers add up to the size; a buffer that nothing was written to is zeroed.
void FillPlaybackBuffer(std::span<uint8_t> buffer, bool paused, SampleSource& source);

}  // namespace libnivral
