// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>

/// Which overlays are shown. The user's thread writes, drawing threads read.
struct OverlaySwitches {
  explicit OverlaySwitches(bool on) : texts(on), assistance(on), monitoring(on) {}

  std::atomic<bool> texts;
  std::atomic<bool> assistance;
  std::atomic<bool> monitoring;
};
