// SPDX-License-Identifier: MIT
#pragma once

#include "backends/ddraw/direct_draw.h"
#include "support/pane.h"

/// A DirectDraw pane whose class is at hand.
struct DDrawPane : Pane {
  DDrawPane(int width, int height, FrameRoad road = FrameRoad::Automatic, int x = 40, int y = 60)
      : Pane(2, width, height, x, y) {
    displayer->SetRoad(road);
  }

  int32_t Draw(TestFrame& frame, int64_t param2 = 0) {
    return static_cast<int32_t>(Pane::Draw(frame, param2));
  }

  /// Draws until the pixel shows the colour: a background erase on its way may wipe the first frames.
  Rgb DrawUntil(TestFrame& frame, int x, int y, const Rgb& expected, int tolerance = 2) {
    Rgb seen{};
    WaitUntil([&] {
      Draw(frame);
      Pump(10);
      const RECT area = ClientOnScreen(window.Handle());
      seen = ScreenShot({area.left + x, area.top + y, area.left + x + 1, area.top + y + 1}).At(0, 0);
      return Near(seen, expected, tolerance);
    });
    return seen;
  }

  CDirectDraw* const displayer = &As<CDirectDraw>();
};

/// What a flat frame looks like: our kernels take the planes as limited range; Wine's YV12 blit as full.
inline Rgb ColourOf(FrameRoad road, int y, int u, int v) {
  return ToRgb(y, u, v, road != FrameRoad::Yv12);
}

inline TestFrame GreyFrame(int width = 64, int height = 48) {
  return FlatFrame(width, height, 126, 128, 128);
}
