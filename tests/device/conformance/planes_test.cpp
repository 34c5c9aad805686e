// SPDX-License-Identifier: MIT
// Planes of all layouts: what holds a frame is shown, the rest refused, the same by all backends.
#include "backends.h"

namespace {

constexpr int kWidth = 160, kHeight = 120;

uint32_t Draw(Pane& pane, const FrameView& f) {
  return NIVRAL_DWDrawYUV420(pane.handle, f.y, static_cast<uint32_t>(f.strideY), f.u, f.v,
                             static_cast<uint32_t>(f.strideU), 0, 0);
}

/// A colour of its own in each quarter, from the top row on down or, in memory, up.
TestFrame Quarters() {
  TestFrame f = FlatFrame(kWidth, kHeight, 0, 128, 128);
  for (int y = 0; y < kHeight; ++y)
    for (int x = 0; x < kWidth; ++x) {
      const int quarter = (y < kHeight / 2 ? 0 : 2) + (x < kWidth / 2 ? 0 : 1);
      f.y[static_cast<size_t>(y * kWidth + x)] = static_cast<uint8_t>(60 + 40 * quarter);
      f.u[static_cast<size_t>(y / 2 * (kWidth / 2) + x / 2)] = static_cast<uint8_t>(100 + 15 * quarter);
    }
  return f;
}

FrameView BottomUp(TestFrame& f) {
  FrameView view = f.View();
  view.y += (kHeight - 1) * kWidth, view.strideY = -kWidth;
  view.u += (kHeight / 2 - 1) * kWidth / 2, view.strideU = -kWidth / 2;
  view.v += (kHeight / 2 - 1) * kWidth / 2, view.strideV = -kWidth / 2;
  return view;
}

TEST_P(Conformance, BottomUpPlanesAreShownAndMirroredLikeOthers) {
  Pane pane(b.type, kWidth, kHeight);
  pane.Start(kWidth, kHeight);
  TestFrame f = Quarters();
  for (const uint32_t mirror : {0u, 1u, 2u}) {
    SCOPED_TRACE(mirror);
    NIVRAL_DWSetMirrorMode(pane.handle, mirror);
    EXPECT_EQ(Draw(pane, BottomUp(f)), 0u);
    for (int seen = 0; seen < 4; ++seen) {
      const int quarter = seen ^ (mirror == 2 ? 0 : 2) ^ (mirror ? 1 : 0);
      EXPECT_PIXEL(pane.Window(), seen & 1 ? 120 : 40, seen & 2 ? 90 : 30,
                   {ToRgb(60 + 40 * quarter, 100 + 15 * quarter, 128, pane.limitedRange)});
    }
  }
}

TEST_P(Conformance, PlanesThatHoldNoFrameAreRefused) {
  Pane pane(b.type, kWidth, kHeight);
  pane.Start(kWidth, kHeight);
  TestFrame f = Quarters();
  const FrameView good = f.View(), up = BottomUp(f);
  const FrameView bad[] = {
      {nullptr, kWidth, good.u, 80, good.v, 80}, {good.y, kWidth, nullptr, 80, good.v, 80},
      {good.y, kWidth, good.u, 80, nullptr, 80}, {good.y, kWidth - 1, good.u, 80, good.v, 80},
      {good.y, kWidth, good.u, 79, good.v, 79},  {good.y, 0, good.u, 80, good.v, 80},
      {good.y, kWidth, good.u, 0, good.v, 0},    {up.y, 1 - kWidth, up.u, -80, up.v, -80},
      {up.y, -kWidth, up.u, -79, up.v, -79}};
  for (const uint32_t mirror : {0u, 1u}) {
    NIVRAL_DWSetMirrorMode(pane.handle, mirror);
    for (const FrameView& planes : bad)
      EXPECT_EQ(Draw(pane, planes), b.badFrame) << "frame " << &planes - bad;
  }
  NIVRAL_DWSetMirrorMode(pane.handle, 0);
  pane.Settle(kWidth, kHeight);
  EXPECT_EQ(Draw(pane, good), 0u);
  EXPECT_PIXEL(pane.Window(), 40, 30, {ToRgb(60, 100, 128, pane.limitedRange)});
}

}  // namespace
