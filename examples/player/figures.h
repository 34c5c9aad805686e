// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

/// What a run achieved. Filled by the drawing thread, read when it has ended.
struct Figures {
  int64_t shown = 0;
  int64_t dropped = 0;           ///< refused by the library, or late and left out
  double millisecondsInAll = 0;  ///< spent in the library for the frames shown

  /// "frames 250, dropped 0, 4.12 ms per frame"
  std::string Line() const;
};
