// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "backends/d3d9/d3d_displayer.h"
#include "core/d3d9/surface_reference.h"
#include "support/screen.h"
#include "support/test_window.h"

constexpr int32_t kPaneWidth = 160;
constexpr int32_t kPaneHeight = 120;

/// A displayer on a window of its own, by default as large as the test frames, so that pixels come out one to
/// one.
class D3DPane {
 public:
  explicit D3DPane(int width = kPaneWidth, int height = kPaneHeight, int x = 40, int y = 60)
      : window(width, height, x, y, WS_POPUP) {
    displayer.SetPlayWnd(window.Handle());
    EXPECT_EQ(displayer.LoadDirect3D(), 1);
    EXPECT_EQ(displayer.InitDraw(kPaneWidth, kPaneHeight, 0), 0);
  }

  int32_t Draw(const FrameView& f) {
    return displayer.DrawYUV420(f.y, f.strideY, f.u, f.strideU, f.v, f.strideV, 0, 0);
  }
  int32_t Draw(TestFrame& frame) { return Draw(frame.View()); }

  /// A late erasure of a new window can wipe the first picture.
  int32_t DrawTwice(TestFrame& frame) {
    Draw(frame);
    Pump(20);
    return Draw(frame);
  }

  ScreenShot Shot() const { return ScreenShot(ClientOnScreen(window.Handle())); }

  TestWindow window;
  D3DDisplayer displayer;
};

/// A grey frame whose every pixel tells its place from its neighbours'.
inline TestFrame PlacesFrame(int32_t width = kPaneWidth, int32_t height = kPaneHeight) {
  std::mt19937 random(7);
  TestFrame frame = FlatFrame(width, height, 0, 128, 128);
  for (uint8_t& sample : frame.y)
    sample = static_cast<uint8_t>(20 + random() % 200);
  return frame;
}

/// Polls the pane until `accept` likes the picture; its last complaint is the failure. Presenting is
/// asynchronous.
inline void ExpectPicture(const D3DPane& pane,
                          const std::function<std::string(const ScreenShot&)>& complain) {
  std::string complaint;
  const ULONGLONG end = GetTickCount64() + 60'000;
  do {
    complaint = complain(pane.Shot());
    if (complaint.empty()) return;
    Sleep(10);
  } while (GetTickCount64() < end);
  ADD_FAILURE() << complaint;
}

/// Expects the grey picture that a surface's luma gives.
inline void ExpectLuma(const D3DPane& pane, const TestSurface& surface) {
  ExpectPicture(pane, [&](const ScreenShot& shot) -> std::string {
    for (int y = 0; y < surface.view.height; ++y)
      for (int x = 0; x < surface.view.width; ++x) {
        const int luma = surface.view.Luma().Row(y)[x];
        const Rgb seen = shot.At(x, y);
        if (!Near(seen, {luma, luma, luma}, 2)) {
          return testing::PrintToString(seen) + " instead of luma " + std::to_string(luma) + " at " +
                 std::to_string(x) + "," + std::to_string(y);
        }
      }
    return "";
  });
}
