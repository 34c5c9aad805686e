// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>

#include "display/base_displayer.h"

namespace libnivral {

/// What NIVRAL_DWOpenDrawEx takes.
enum BackendType : uint32_t { kSdl = 0, kDirect3D = 1, kDirectDraw = 2 };

/// Process-wide choices, made at start-up. Plain variables: the client finishes start-up before it opens
/// panes from other threads.
struct LibraryState {
  uint32_t bUseSDL = 0;
  uint32_t bNoDirect3D = 0;
};

extern LibraryState g_library;

/// A pane of a backend, or why there is none: no memory, or no run-time of the backend's on this machine.
struct CreatedPane {
  std::unique_ptr<BaseDisplayer> displayer;
  bool runTimeMissing = false;
};

struct Backend {
  uint32_t type;
  const wchar_t* name;  ///< of its class, in the log
  CreatedPane (*create)();
};

/// The backend of a type; DirectDraw's for every number that is no other's.
const Backend& FindBackend(uint32_t type);

}  // namespace libnivral
