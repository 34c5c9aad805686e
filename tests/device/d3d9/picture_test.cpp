// SPDX-License-Identifier: MIT
// What is on the screen: frames, zoom and mosaics.
#include <cmath>

#include "pane.h"

namespace {

TestFrame Mirrored(TestFrame frame, uint32_t mode) {
  for (auto* plane : {&frame.y, &frame.u, &frame.v}) {
    const auto width = static_cast<std::ptrdiff_t>(plane == &frame.y ? frame.strideY : frame.strideUV);
    if (mode == 2) std::reverse(plane->begin(), plane->end());
    for (auto row = plane->begin(); mode == 1 && row != plane->end(); row += width)
      std::reverse(row, row + width);
  }
  return frame;
}

/// Anything but a bright patch of that place, in parts of the window, on a darker ground is stale or missing.
std::string ComplainOfPatch(const ScreenShot& shot, int ground, double left, double top) {
  for (int y = 0; y < shot.Height(); ++y)
    for (int x = 0; x < shot.Width(); ++x) {
      const double px = (x + 0.5) / shot.Width() - left, py = (y + 0.5) / shot.Height() - top;
      const double border = 4.0 / std::min(shot.Width(), shot.Height());
      const double outside = std::max({-px, px - 0.25, -py, py - 0.25});
      const Rgb seen = shot.At(x, y);
      if (std::abs(outside) < border ||
          Near(seen, outside < 0 ? Rgb{235, 235, 235} : Rgb{ground, ground, ground}, 2))
        continue;
      return testing::PrintToString(seen) + " at " + std::to_string(x) + "," + std::to_string(y) + " of " +
             std::to_string(shot.Width()) + "x" + std::to_string(shot.Height());
    }
  return "";
}

TEST(D3dPicture, FillsWindowsOfAnySizeWhileTheyChange) {
  constexpr int kWidth = 1280, kHeight = 720;
  D3DPane pane(320, 180);
  EXPECT_EQ(pane.displayer.FreeDraw(), 0);
  EXPECT_EQ(pane.displayer.InitDraw(kWidth, kHeight, 0), 0);
  std::mt19937 random(5);
  for (int i = 0; i < 50; ++i) {
    const bool large = i % 25 == 24;
    if (i > 0)
      pane.window.ResizeClient(large ? 1919 : 100 + random() % 500, large ? 1079 : 60 + random() % 300);
    const int ground = 40 + 2 * i;
    const int left = static_cast<int>(random() % 16), top = static_cast<int>(random() % 12);
    TestFrame frame = FlatFrame(kWidth, kHeight, static_cast<uint8_t>(ground), 128, 128);
    for (int y = 0; y < kHeight / 4; ++y)
      std::fill_n(frame.y.begin() + (top * kHeight / 16 + y) * kWidth + left * kWidth / 21, kWidth / 4, 235);
    EXPECT_EQ(pane.DrawTwice(frame), 0);
    ExpectPicture(
        pane, [&](const ScreenShot& shot) { return ComplainOfPatch(shot, ground, left / 21.0, top / 16.0); });
    if (testing::Test::HasFailure()) break;
  }
}

TEST(D3dPicture, ZoomsAtEveryFactorInEveryMirrorMode) {
  D3DPane pane;
  TestFrame frame = PlacesFrame();
  pane.DrawTwice(frame);
  for (uint32_t mirror = 0; mirror < 3; ++mirror) {
    pane.displayer.SetMirrorMode(mirror);
    pane.displayer.SetZoom(0, 0, 1);
    TestFrame shown = Mirrored(frame, mirror);
    EXPECT_EQ(pane.Draw(frame), 0);
    ExpectLuma(pane, ReferenceZoom(shown, kPaneWidth, {}));
    for (uint32_t factor = 2; factor <= 8; ++factor) {
      const auto expected = ZoomTo({}, mirror, 300, 650, static_cast<int32_t>(factor));
      pane.displayer.SetZoom(0, 0, 1);
      pane.displayer.SetZoom(300, 650, factor);
      EXPECT_EQ(pane.Draw(frame), 0);
      ExpectLuma(pane, ReferenceZoom(shown, kPaneWidth, expected));
    }
  }
}

TEST(D3dPicture, RepeatsRowsInTheMosaicArea) {
  D3DPane pane;
  TestFrame frame = PlacesFrame();
  pane.displayer.SetMosaicAreaScale(0.25f, 0.5f, 0.75f, 1.0f);
  pane.displayer.SetMosaicFlag(1);
  pane.displayer.SetMosaicLevel(10);
  pane.DrawTwice(frame);
  ExpectLuma(pane, ReferenceArea(frame, kPaneWidth, {{80, 30, 160, 90}, 10}));
  pane.displayer.SetMosaicLevel(0);
  EXPECT_EQ(pane.Draw(frame), 0);
  ExpectLuma(pane, ReferenceZoom(frame, kPaneWidth, {}));
}

/// The surface as drawn from the picture by hand.
TestSurface WithMosaics(TestFrame& frame, uint32_t mirror, const ZoomState& zoom,
                        const std::vector<MilleRect>& mosaics) {
  TestFrame shown = Mirrored(frame, mirror);
  TestSurface surface = ReferenceZoom(shown, kPaneWidth, zoom);
  surface.view.bits = surface.bytes.data();
  for (const MilleRect& mosaic : mosaics) {
    const PixelRect area = MosaicOnSurface(mosaic, zoom, mirror, kPaneWidth, kPaneHeight);
    for (int32_t row = area.top; row < area.bottom; ++row)
      for (int32_t column = area.left; column < area.right; ++column)
        surface.view.Luma().Row(row)[column] = BlockSample(shown, zoom, mirror, row, column);
  }
  return surface;
}

class D3dMosaics : public testing::Test {
 protected:
  D3dMosaics() { m_pane.DrawTwice(m_frame); }

  int32_t Place(const MilleRect& rect) { return m_pane.displayer.SetMosaicRect(&rect); }
  int32_t Pick(LONG x, LONG y) { return m_pane.displayer.SetRClickPt({x, y}); }
  void ExpectMosaics(uint32_t mirror, const ZoomState& zoom, const std::vector<MilleRect>& mosaics) {
    EXPECT_EQ(m_pane.Draw(m_frame), 0);
    ExpectLuma(m_pane, WithMosaics(m_frame, mirror, zoom, mosaics));
  }

  D3DPane m_pane;
  TestFrame m_frame = PlacesFrame();
};

TEST_F(D3dMosaics, ArePlacedCommittedPickedAndDeleted) {
  const MilleRect first{100, 100, 500, 600};
  const MilleRect second{400, 300, 900, 950};
  EXPECT_EQ(Place(first), 0);
  ExpectMosaics(0, {}, {first});
  m_pane.displayer.UpdateMosaics(1);
  EXPECT_EQ(Place(second), 0);
  ExpectMosaics(0, {}, {first, second});
  EXPECT_EQ(Place({300, 300, 300, 500}), 1) << "an empty rectangle";
  ExpectMosaics(0, {}, {first});
  Place(second);
  m_pane.displayer.UpdateMosaics(1);
  m_pane.displayer.UpdateMosaics(1);

  EXPECT_EQ(Pick(950, 50), 1);
  m_pane.displayer.UpdateMosaics(0);
  ExpectMosaics(0, {}, {first, second});
  EXPECT_EQ(Pick(450, 400), 0) << "both lie here, the older one is picked";
  m_pane.displayer.UpdateMosaics(0);
  m_pane.displayer.UpdateMosaics(0);
  ExpectMosaics(0, {}, {second});
}

TEST_F(D3dMosaics, FollowZoomAndMirror) {
  for (uint32_t mirror = 0; mirror < 3; ++mirror) {
    m_pane.displayer.SetMirrorMode(mirror);
    for (uint32_t factor : {1u, 2u, 3u, 7u, 8u}) {
      m_pane.displayer.SetZoom(0, 0, 1);
      m_pane.displayer.SetZoom(450, 600, factor);
      const ZoomState zoom = ZoomTo({}, mirror, 450, 600, static_cast<int32_t>(factor));
      const MilleRect drawn{200, 150, 850, 700};
      EXPECT_EQ(Place(drawn), 0);
      const MilleRect stored = FrameRectUnder(drawn, zoom, mirror).value();
      ExpectMosaics(mirror, zoom, {stored});
      m_pane.displayer.UpdateMosaics(1);
      EXPECT_EQ(Pick(100, 100), 1);
      EXPECT_EQ(Pick(500, 400), 0);
      m_pane.displayer.UpdateMosaics(0);
      ExpectMosaics(mirror, zoom, {});
    }
  }
}

TEST_F(D3dMosaics, OfAnyRectangleAndModeDoNoHarm) {
  Place({0, 0, 10, 10});
  const int32_t wild[] = {INT32_MAX, INT32_MIN, INT32_MIN, INT32_MAX};
  m_pane.displayer.SetMosaics(wild);
  EXPECT_EQ(m_pane.Draw(m_frame), 0);
  const int32_t whole[] = {-5, -5, 90000, 90000};
  m_pane.displayer.SetMosaics(whole);
  ExpectMosaics(0, {}, {{0, 0, 1000, 1000}});
  EXPECT_EQ(m_pane.displayer.SetMosaicRect(nullptr), 1);
  m_pane.displayer.SetMirrorMode(9);
  EXPECT_EQ(Place({0, 0, 500, 500}), 0);
  ExpectMosaics(0, {}, {{0, 0, 1000, 1000}});
}

}  // namespace
