// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cmath>
#include <memory>

#include "backends/ddraw/direct_draw.h"
#include "support/frames.h"
#include "support/screen.h"
#include "support/test_window.h"

/// A DirectDraw pane on a window of its own, used from the window's thread.
struct DDrawPane {
  DDrawPane(int width, int height, FrameRoad road = FrameRoad::Automatic, int x = 40, int y = 60)
      : window(width, height, x, y) {
    displayer->SetRoad(road);
    displayer->SetPlayWnd(window.Handle());
  }

  int32_t Draw(TestFrame& frame, int64_t param2 = 0) {
    const FrameView f = frame.View();
    return displayer->DrawYUV420(f.y, f.strideY, f.u, f.strideU, f.v, f.strideV, 0, param2);
  }

  /// Draws until the pixel shows the colour: a background erase on its way may wipe the first frames.
  Rgb DrawUntil(TestFrame& frame, int x, int y, const Rgb& expected, int tolerance = 2) {
    Rgb seen{};
    for (int i = 0; i < 20; ++i) {
      Pump(10);
      Draw(frame);
      seen = WaitForPixel(window.Handle(), x, y, expected, tolerance, 200);
      if (Near(seen, expected, tolerance)) break;
    }
    return seen;
  }

  TestWindow window;
  std::unique_ptr<CDirectDraw> displayer = std::make_unique<CDirectDraw>();
};

/// What a flat frame looks like: our kernels take the planes as limited range; Wine's YV12 blit as full
/// range.
inline Rgb ColourOf(FrameRoad road, int y, int u, int v) {
  const bool full = road == FrameRoad::Yv12;
  const double luma = full ? y : (y - 16) * 255.0 / 219.0;
  const double scale = full ? 1.0 : 255.0 / 224.0;
  const double blue = (u - 128) * scale;
  const double red = (v - 128) * scale;
  const auto channel = [](double value) {
    return static_cast<int>(std::lround(std::clamp(value, 0.0, 255.0)));
  };
  return {channel(luma + 1.402 * red), channel(luma - 0.344136 * blue - 0.714136 * red),
          channel(luma + 1.772 * blue)};
}

inline TestFrame GreyFrame(int width = 64, int height = 48) {
  return FlatFrame(width, height, 126, 128, 128);
}
