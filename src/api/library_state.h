// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// Process-wide choices. Plain variables: the client finishes start-up before it opens panes from other
/// threads.
struct LibraryState {
  uint32_t bUseSDL = 0;
  uint32_t bNoDirect3D = 0;
};

extern LibraryState g_library;
