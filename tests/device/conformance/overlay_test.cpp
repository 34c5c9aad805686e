// SPDX-License-Identifier: MIT
// Texts, boxes and landmarks over a black picture, and the records they come from.
#include <bit>
#include <cstdlib>

#include "backends.h"

namespace {

constexpr int kWidth = 320, kHeight = 240;

bool IsRed(const Rgb& c) {
  return c.r >= 0x70 && c.g <= 0x50 && c.b <= 0x50;
}
bool IsLit(const Rgb& c) {
  return !Near(c, {16, 16, 16}, 30);
}
bool IsGreen(const Rgb& c) {
  return Near(c, {0, 255, 0}, 8);
}

uint32_t Word(float value) {
  return std::bit_cast<uint32_t>(value);
}

/// A pane that shows a black video twice as large, or one to one.
struct BlackPane : Pane {
  BlackPane(const Backend& b, int scale) : Pane(b.type, kWidth * scale, kHeight * scale) {
    Start(kWidth, kHeight);
  }
  Found Text(uint32_t x, uint32_t y, uint32_t anchor, const char* text) {
    NIVRAL_DWSetOSDText(handle, 5, text, x, y, anchor, 0x000000FF);
    return Find(Show(black), &IsRed);
  }
  /// A record of either kind: a landmark at 100 and a box from 130 on, both at x.
  void SetRecords(float x) {
    SetBox(x - 10, 130, x + 10, 160, 4, 0, 1);
    const uint32_t place[] = {Word(x), Word(100)};
    NIVRAL_DWSetDsmAlgInfo(handle, 1, place, place + 1, 0, nullptr, nullptr, nullptr, nullptr, 3);
  }
  /// Where the records are that the next frame shows; -1 for none, -2 when they are not of one call.
  int ShowRecords(const Backend& b) {
    const ScreenShot shot = Show(black);
    const Found point = Find(shot, &IsGreen, {0, 90, kWidth, 110});
    const Found box =
        Find(shot, [&](const Rgb& c) { return Near(c, b.other, b.boxTolerance); }, {0, 140, kWidth, 150});
    if (!point.count) return box.count && !b.boxesOutlive ? -2 : -1;
    const auto middle = [](const Found& f) { return static_cast<int>(f.box.left + f.box.right) / 2; };
    return std::abs(middle(point) - middle(box)) <= 2 ? middle(point) : -2;
  }
  TestFrame black = FlatFrame(kWidth, kHeight, 16, 128, 128);
};

TEST_P(Conformance, TextsStandWhereTheyWerePutInTheirColour) {
  BlackPane pane(b, 2);
  const int unit = b.textInWindowPixels ? 1 : 2;
  const Found top = pane.Text(50, 40, 0, "HHHH");
  EXPECT_GT(top.count, 60);
  EXPECT_NEAR(top.box.left, 50 * unit + 3, 5);
  EXPECT_NEAR(top.box.top, 40 * unit + 4, 7);
  EXPECT_LT(top.box.bottom, 40 * unit + 40);
  const int height = b.textInWindowPixels ? 2 * kHeight : kHeight;
  const Found bottom = pane.Text(50, static_cast<uint32_t>(height - 40), 1, "HHHH");
  EXPECT_TRUE(EqualRect(&top.box, &bottom.box)) << "counted from the bottom";
  const uint32_t nearEdge = static_cast<uint32_t>(2 * kWidth / unit - 90 / unit);
  const Found broken = pane.Text(nearEdge, 40, 0, "HHH HHH HHH");
  EXPECT_GT(broken.box.bottom - broken.box.top, top.box.bottom - top.box.top + 8)
      << "lines break at the edge";

  EXPECT_EQ(pane.Text(50, 40, 0, "").count, 0);
  for (const auto& [x, y, anchor] :
       {std::array<uint32_t, 3>{50, 4000, 0}, {0xFFFFFFF0, 40, 0}, {50, 0xFFFFFFF0, 1}, {4000, 40, 0}})
    EXPECT_EQ(pane.Text(x, y, anchor, "H").count, 0) << x << "," << y;
  pane.Text(0, 0, 0, std::string(300, '\xE9').append("\x01\x7F\x80").append(400, '\n').c_str());

  pane.black = FlatFrame(kWidth / 2, kHeight / 2, 16, 128, 128);
  NIVRAL_DWFreeDraw(pane.handle);
  pane.Start(kWidth / 2, kHeight / 2);
  EXPECT_GT(pane.Text(50, 40, 0, "HHHH").count, 60) << "after a new video size";
}

TEST_P(Conformance, BoxesHaveOutlinesAndBarsForTheirLabels) {
  BlackPane pane(b, 1);
  for (const uint16_t type : {uint16_t{1}, uint16_t{4}}) {
    const auto isBox = [&, colour = type == 1 ? b.person : b.other](const Rgb& c) {
      return Near(c, colour, b.boxTolerance);
    };
    pane.SetBox(80, 60, 240, 180, type, 123, 1);
    const ScreenShot shot = pane.Show(pane.black);
    for (int i = 1; i < 8; ++i) {
      EXPECT_TRUE(isBox(shot.At(80 + 160 * i / 8, 60)) && !isBox(shot.At(80 + 160 * i / 8, 63)))
          << "top " << i;
      EXPECT_TRUE(isBox(shot.At(80, 60 + 120 * i / 8)) && !isBox(shot.At(83, 60 + 120 * i / 8)))
          << "left " << i;
    }
    const Found whole = Find(shot, isBox, {70, 50, 250, 183});
    EXPECT_NEAR(whole.box.right, 240, 2);
    EXPECT_NEAR(whole.box.bottom, 180, 2);
    EXPECT_GT(Find(shot, &IsLit, {80, 50, 110, 59}).count, 60) << "the bar of the class";
    const auto isLetter = [&](const Rgb& c) {
      return b.blueLetters ? c.b > 120 && c.r < 130 : c.r > 200 && c.b > 200;
    };
    EXPECT_GT(Find(shot, isLetter, {80, 44, 130, 60}).count, 8) << "its letters";
    EXPECT_GT(Find(shot, &IsLit, {140, 166, 180, 178}).count, 40) << "the bar of the distance";
  }
  pane.SetBox(-3e38f, std::bit_cast<float>(0x7FC00000u), 3e38f, 3e38f, 3, 65535, 65535);
  const uint32_t wild[] = {Word(3e38f), 0x7FC00000, Word(-3e38f)};
  NIVRAL_DWSetDsmAlgInfo(pane.handle, 3, wild, wild, 1, wild + 2, wild + 1, wild, wild, 65535);
  EXPECT_EQ(pane.Draw(pane.black), 0u) << "any numbers are survived";
}

TEST_P(Conformance, LandmarksAreDiscsAndFacesHaveCorners) {
  BlackPane pane(b, 1);
  constexpr uint32_t kPoints = 68;
  std::array<uint32_t, kPoints> x, y;
  for (uint32_t i = 0; i < kPoints; ++i)
    x[i] = Word(static_cast<float>(20 + i % 10 * 12)), y[i] = Word(static_cast<float>(40 + i / 10 * 12));
  x[66] = Word(150), y[66] = Word(-3);
  const uint32_t face[] = {Word(160), Word(90), Word(240), Word(200)};
  NIVRAL_DWSetDsmAlgInfo(pane.handle, kPoints, x.data(), y.data(), 1, face, face + 1, face + 2, face + 3, 3);
  const ScreenShot shot = pane.Show(pane.black);
  for (int i = 0; i < 66; ++i)
    EXPECT_EQ(IsGreen(shot.At(20 + i % 10 * 12, 40 + i / 10 * 12)), b.everyLandmark || i % 2 == 0) << i;
  EXPECT_FALSE(IsGreen(shot.At(20 + 4, 40)));
  EXPECT_TRUE(IsGreen(shot.At(150, 0))) << "the lowest row of a disc above the picture";
  const Found corners = Find(shot, &IsGreen, {140, 70, kWidth, kHeight});
  EXPECT_NEAR(corners.box.left, 157, 4);
  EXPECT_NEAR(corners.box.bottom, 203, 4);
  EXPECT_EQ(Find(shot, &IsGreen, {195, 70, 205, kHeight}).count, 0) << "sides are open in the middle";
  EXPECT_EQ(Find(shot, &IsGreen, {140, 140, kWidth, 150}).count, 0);
}

/// Longer than a record's second by more than the system's clock ticks apart.
constexpr DWORD kOverASecondMs = 1100;

TEST_P(Conformance, EachFrameTakesOneRecordAndAPausedPaneNone) {
  BlackPane pane(b, 1);
  for (int i = 1; i <= 3; ++i)
    pane.SetRecords(static_cast<float>(50 * i));
  for (int i = 1; i <= 3; ++i)
    EXPECT_NEAR(pane.ShowRecords(b), 50 * i, 1);
  Sleep(kOverASecondMs);
  EXPECT_EQ(pane.ShowRecords(b), -1) << "records go after a second";

  pane.SetRecords(200);
  EXPECT_NEAR(pane.ShowRecords(b), 200, 1);
  NIVRAL_DWSetPause(pane.handle, 1);
  pane.SetRecords(250);
  Sleep(kOverASecondMs);
  EXPECT_NEAR(pane.ShowRecords(b), 200, 1) << "held";
  NIVRAL_DWSetPause(pane.handle, 0);
  EXPECT_NEAR(pane.ShowRecords(b), 250, 1);

  for (int i = 1; i <= 4; ++i) {
    pane.SetRecords(static_cast<float>(50 * i));
    NIVRAL_DWSetPause(pane.handle, i == 3);
    if (i > 1) {
      EXPECT_EQ(NIVRAL_DWDrawYUV420(pane.handle, nullptr, 0, nullptr, nullptr, 0, 0, 0), b.badFrame);
    }
  }
  EXPECT_NEAR(pane.ShowRecords(b), 150, 1)
      << "refused frames took a record each, but for the one while paused";
}

}  // namespace
