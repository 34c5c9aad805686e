// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

/// What one or several panes achieved.
struct Figures {
  int64_t shown = 0;             ///< different frames
  int64_t dropped = 0;           ///< refused by the library, or late and left out
  int64_t draws = 0;             ///< also of frames that were shown before
  double millisecondsInAll = 0;  ///< spent in the library for them

  Figures& operator+=(const Figures& other);
  Figures operator-(const Figures& earlier) const;
  double MillisecondsPerFrame() const;

  /// "frames 250, dropped 0, 4.12 ms per frame"
  std::string Line() const;
};
