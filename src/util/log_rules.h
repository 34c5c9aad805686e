// SPDX-License-Identifier: MIT
// When the log reads its settings, what they mean, and which files of its folder it deletes.
#pragma once

#include <algorithm>
#include <atomic>
#include <cstdint>

namespace libnivral {

constexpr int32_t kDefaultLogLevel = 2;
constexpr uint32_t kDefaultLogSizeMiB = 5;
constexpr uint32_t kLogFileLimit = 0x100000;

/// The folder's budget for a SIZE setting: 6 to 1024 MiB are taken as they are, anything else is the default.
constexpr uint32_t AcceptedLogSizeMiB(int32_t setting) {
  return setting < 6 || setting > 1024 ? kDefaultLogSizeMiB : static_cast<uint32_t>(setting);
}

/// Whether settings read at `readAtMs` are due at `nowMs` of the same wrapping millisecond clock.
constexpr bool LogSettingsDue(uint32_t nowMs, uint32_t readAtMs) {
  return static_cast<int32_t>(nowMs - readAtMs) >= 60000;
}

/// Spares most calls the exact clock, whose query is a system call: a coarse clock that costs next to nothing
/// says when the settings cannot be due yet. Any thread.
class CoarseDeadline {
 public:
  /// To a minute from now, less the second that the two clocks may have run apart.
  void Restart(uint64_t coarseMs) { m_at.store(coarseMs + 59000, std::memory_order_relaxed); }

  /// Whether the exact clock must be asked; true at most once per coarse millisecond and thread.
  bool Passed(uint64_t coarseMs) {
    if (coarseMs < m_at.load(std::memory_order_relaxed)) return false;
    m_at.store(coarseMs + 1, std::memory_order_relaxed);
    return true;
  }

 private:
  std::atomic<uint64_t> m_at{0};
};

/// Deletes files until the folder is below `budget` bytes. `forEachFile(visit)` calls visit(name, size) for
/// every file in listing order until that returns false; `remove(name)` returns whether the file is gone.
/// What cannot be deleted still counts.
template <class ForEachFile, class Remove>
void TrimToBudget(ForEachFile forEachFile, Remove remove, uint64_t budget) {
  uint64_t total = 0;
  forEachFile([&](const auto*, uint32_t size) {
    total += size;
    return true;
  });
  if (total < budget) return;
  forEachFile([&](const auto* name, uint32_t size) {
    if (remove(name)) total -= std::min<uint64_t>(total, size);  // it may have grown meanwhile
    return total >= budget;
  });
}

}  // namespace libnivral
