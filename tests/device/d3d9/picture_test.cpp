// SPDX-License-Identifier: MIT
// Zoom and the mosaics that clients draw, pick and delete.
#include "core/d3d9/surface_reference.h"
#include "d3d_test.h"

namespace {

constexpr int32_t kWidth = 160, kHeight = 120;

TestFrame Mirrored(TestFrame frame, uint32_t mode) {
  for (auto* plane : {&frame.y, &frame.u, &frame.v}) {
    const auto width = static_cast<std::ptrdiff_t>(plane == &frame.y ? frame.strideY : frame.strideUV);
    if (mode == 2) std::reverse(plane->begin(), plane->end());
    for (auto row = plane->begin(); mode == 1 && row != plane->end(); row += width)
      std::reverse(row, row + width);
  }
  return frame;
}

class D3dPicture : public D3dTest {
 protected:
  D3dPicture() {
    std::mt19937 random(7);
    for (uint8_t& sample : m_frame.y)
      sample = static_cast<uint8_t>(20 + random() % 200);
    pane.Start(kWidth, kHeight);
  }

  int32_t Place(const MilleRect& rect) { return displayer.SetMosaicRect(&rect); }
  int32_t Pick(LONG x, LONG y) { return displayer.SetRClickPt({x, y}); }

  /// Draws, and expects the luma of the picture drawn by hand.
  void ExpectShown(uint32_t mirror, const ZoomState& zoom, const std::vector<MilleRect>& mosaics) {
    TestFrame shown = Mirrored(m_frame, mirror);
    TestSurface surface = ReferenceZoom(shown, kWidth, zoom);
    surface.view.bits = surface.bytes.data();
    for (const MilleRect& mosaic : mosaics) {
      const PixelRect area = MosaicOnSurface(mosaic, zoom, mirror, kWidth, kHeight);
      for (int32_t row = area.top; row < area.bottom; ++row)
        for (int32_t column = area.left; column < area.right; ++column)
          surface.view.Luma().Row(row)[column] = BlockSample(shown, zoom, mirror, row, column);
    }
    EXPECT_EQ(pane.Draw(m_frame), 0u);
    Found wrong;
    EXPECT_TRUE(WaitUntil([&] {
      const uint8_t* luma = surface.bytes.data();
      wrong = Find(ScreenShot(ClientOnScreen(pane.Window())), [&](const Rgb& c) {
        const int wanted = *luma++;
        return !Near(c, {wanted, wanted, wanted}, 2);
      });
      return wrong.count == 0;
    })) << wrong.count
        << " pixels differ, from " << wrong.box.left << "," << wrong.box.top << " on";
  }

  TestFrame m_frame = FlatFrame(kWidth, kHeight, 0, 128, 128);
};

TEST_F(D3dPicture, IsZoomedWithItsMosaicsInEveryMirrorMode) {
  for (uint32_t mirror = 0; mirror < 3; ++mirror) {
    displayer.SetMirrorMode(mirror);
    for (const uint32_t factor : {1u, 2u, 7u, 8u}) {
      displayer.SetZoom(0, 0, 1);
      displayer.SetZoom(450, 600, factor);
      const ZoomState zoom = ZoomTo({}, mirror, 450, 600, static_cast<int32_t>(factor));
      const MilleRect drawn{200, 150, 850, 700};
      EXPECT_EQ(Place(drawn), 0);
      const MilleRect stored = FrameRectUnder(drawn, zoom, mirror).value();
      ExpectShown(mirror, zoom, {stored});
      displayer.UpdateMosaics(1);
      EXPECT_EQ(Pick(100, 100), 1);
      EXPECT_EQ(Pick(500, 400), 0);
      displayer.UpdateMosaics(0);
      ExpectShown(mirror, zoom, {});
    }
  }
}

TEST_F(D3dPicture, MosaicsArePlacedCommittedPickedAndDeleted) {
  const MilleRect first{100, 100, 500, 600}, second{400, 300, 900, 950};
  EXPECT_EQ(Place(first), 0);
  displayer.UpdateMosaics(1);
  EXPECT_EQ(Place(second), 0);
  ExpectShown(0, {}, {first, second});
  EXPECT_EQ(Place({300, 300, 300, 500}), 1) << "an empty rectangle";
  ExpectShown(0, {}, {first});
  Place(second);
  displayer.UpdateMosaics(1);
  displayer.UpdateMosaics(1);

  EXPECT_EQ(Pick(950, 50), 1);
  displayer.UpdateMosaics(0);
  ExpectShown(0, {}, {first, second});
  EXPECT_EQ(Pick(450, 400), 0) << "both lie here, the older one is picked";
  displayer.UpdateMosaics(0);
  displayer.UpdateMosaics(0);
  ExpectShown(0, {}, {second});
}

TEST_F(D3dPicture, MosaicsOfAnyRectangleAndModeDoNoHarm) {
  Place({0, 0, 10, 10});
  const int32_t wild[] = {INT32_MAX, INT32_MIN, INT32_MIN, INT32_MAX}, whole[] = {-5, -5, 90000, 90000};
  displayer.SetMosaics(wild);
  EXPECT_EQ(pane.Draw(m_frame), 0u);
  displayer.SetMosaics(whole);
  ExpectShown(0, {}, {{0, 0, 1000, 1000}});
  EXPECT_EQ(displayer.SetMosaicRect(nullptr), 1);
  displayer.SetMirrorMode(9);
  EXPECT_EQ(Place({0, 0, 500, 500}), 0);
  ExpectShown(0, {}, {{0, 0, 1000, 1000}});
}

}  // namespace
