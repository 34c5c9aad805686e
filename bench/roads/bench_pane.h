// SPDX-License-Identifier: MIT
// What takes turns: a pane of the library, plain or with all that can lie over a picture, and a bare program
// that only uploads, stretches and presents.
#pragma once

#include <windows.h>

#include <memory>

#include "roads/bench_window.h"
#include "support/frames.h"

constexpr int kFrameWidth = 640;
constexpr int kFrameHeight = 360;

class BenchPane {
 public:
  virtual ~BenchPane() = default;
  /// Ends the process when the frame is not taken.
  virtual void Draw(TestFrame& frame) = 0;
};

using PanePointer = std::unique_ptr<BenchPane>;

PanePointer MakeBareSdl(int place);
PanePointer MakeBareDirect3D(int place);
PanePointer MakeBareDirectDraw(int place);

/// `backend` as NIVRAL_DWOpenDrawEx takes it.
PanePointer MakePlainPane(int place, uint32_t backend);
PanePointer MakeFullPane(int place, uint32_t backend);

[[noreturn]] void Fail(const char* what);
