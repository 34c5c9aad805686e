// SPDX-License-Identifier: MIT
// How long an algorithm record stays on the screen. Ticks are milliseconds of a clock that the caller reads.
#pragma once

#include <cstdint>
#include <optional>

namespace libnivral {

constexpr uint64_t kRecordLifetimeMs = 1000;

/// The record being shown, once there has been one, and the tick from which its lifetime counts.
template <class Record>
struct ShownRecord {
  bool shown = false;
  Record record{};
  uint64_t arrival = 0;

  bool Fresh(uint64_t now) const { return now - arrival < kRecordLifetimeMs; }
};

/// Takes one frame's step for records drawn over the picture and returns whether to draw. The very first
/// record is not timed: its arrival stays 0, so it shows for one frame only unless another follows.
template <class Record>
bool AdvanceOverlay(ShownRecord<Record>& last, const std::optional<Record>& taken, uint64_t now) {
  if (!taken) return last.shown && last.Fresh(now);
  if (last.shown) last.arrival = now;
  last.shown = true;
  last.record = *taken;
  return true;
}

/// The same for records burned into the planes. New records never restart the clock; it starts at the first
/// frame without one.
template <class Record>
bool AdvanceBurnIn(ShownRecord<Record>& last, const std::optional<Record>& taken, uint64_t now) {
  if (taken) {
    last.shown = true;
    last.record = *taken;
    return true;
  }
  if (!last.shown) return false;
  if (last.arrival == 0) last.arrival = now;
  return last.Fresh(now);
}

}  // namespace libnivral
