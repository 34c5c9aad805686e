// SPDX-License-Identifier: MIT
#include "backends/yuvdraw/yuv_draw.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "display/burn_in.h"
#include "support/frames.h"

using namespace libnivral;

namespace {

/// Planes of exactly the bytes that may be written, marked so that every write shows.
struct Canvas : TestFrame {
  static constexpr uint8_t kUntouched = 99;

  Canvas(uint16_t w, uint16_t h) : TestFrame(w, h) { Fill(kUntouched, kUntouched, kUntouched); }

  PlaneSet Planes() {
    const auto w = static_cast<uint16_t>(width), h = static_cast<uint16_t>(height);
    return {kPlanar420, y.data(), u.data(), v.data(), w, h};
  }

  void Line(const PlaneLine& line) {
    const PlaneSet planes = Planes();
    CYuvDraw::DrawLine(&planes, line);
  }

  /// The luma plane as rows of '#' and '.'.
  std::vector<std::string> Picture() const {
    std::vector<std::string> rows(static_cast<size_t>(height));
    for (int i = 0; i < width * height; ++i)
      rows[static_cast<size_t>(i / width)] += y[static_cast<size_t>(i)] == kUntouched ? '.' : '#';
    return rows;
  }
};

using Rows = std::vector<std::string>;

TEST(YuvLine, StepsAlongTheLongerAxisThickensAndPullsEndsIn) {
  const struct {
    PlaneLine line;
    Rows picture;
  } cases[] = {
      {{0, 0, 7, 2, 1, 0}, {"##......", "..####..", "......##", "........"}},
      {{3, 5, 2, 0, 0, 0}, {"..#.", "..#.", "..#.", "...#", "...#", "...#"}},
      {{0, 3, 3, 0, 1, 0}, {"...#", "..#.", ".#..", "#..."}},
      // Thicker ones grow downward, or to the right.
      {{1, 0, 4, 0, 3, 0}, {".####.", ".####.", ".####.", "......"}},
      {{0, 0, 2, 2, 2, 0}, {"##....", ".##...", "..##.."}},
      // Ends outside are pulled in by the line's width instead of clamped.
      {{4, 0, 8, 0, 1, 0}, {"....####", "........"}},
      {{8, 0, 8, 3, 3, 0}, {".....###", ".....###", ".....###", ".....###"}},
      // Still outside after the pull: runs on in the next row and ends with the plane.
      {{2, 1, 9, 1, 1, 0}, {"....", "..##", "####"}},
      {{2, 1, 60000, 1, 1, 0}, {"....", "..##"}},
  };
  for (const auto& c : cases) {
    Canvas canvas(static_cast<uint16_t>(c.picture[0].size()), static_cast<uint16_t>(c.picture.size()));
    canvas.Line(c.line);
    EXPECT_EQ(canvas.Picture(), c.picture);
  }
}

TEST(YuvLine, WritesThePaletteIntoAllPlanes) {
  Canvas canvas(4, 4);
  for (int32_t colour = 0; colour < 11; ++colour) {
    canvas.Line({2, 2, 2, 2, 1, colour});
    const auto primary = [&](int bit) { return colour >> bit & 1 ? 255 : 0; };
    const bool grey = colour > 7;
    EXPECT_EQ(canvas.y[10], grey ? (colour - 8) * 255 / 2 + (colour == 9) : primary(2)) << colour;
    EXPECT_EQ(canvas.u[3], grey ? 128 : primary(1)) << colour;
    EXPECT_EQ(canvas.v[3], grey ? 128 : primary(0)) << colour;
  }
}

TEST(YuvLine, DrawsNothingForWhatItCannotDrawInto) {
  Canvas canvas(4, 4);
  CYuvDraw::DrawLine(nullptr, {});
  for (uint32_t format : {0u, 1u, 2u, 6u, 8u, 1000u, kPlanar420}) {
    PlaneSet other = canvas.Planes();
    other.format = format;
    if (format == kPlanar420) other.y = nullptr;
    CYuvDraw::DrawLine(&other, {0, 0, 3, 3, 1, 0});
  }
  canvas.Line({0, 0, 3, 3, 1, 11});
  canvas.Line({0, 0, 3, 3, 1, -1});
  EXPECT_EQ(canvas.Picture(), Rows(4, "...."));
  EXPECT_EQ(canvas.u, std::vector<uint8_t>(4, Canvas::kUntouched));

  PlaneSet noChroma = canvas.Planes();
  noChroma.u = noChroma.v = nullptr;
  CYuvDraw::DrawLine(&noChroma, {0, 0, 3, 0, 1, 0});
  EXPECT_EQ(canvas.Picture()[0], "####");
}

TEST(YuvRect, FillsOddAndTinyPlanesAndNothingElse) {
  CYuvDraw draw;
  for (uint16_t w = 0; w <= 5; ++w) {
    for (uint16_t h = 0; h <= 5; ++h) {
      Canvas canvas(w, h);
      draw.DrawRect(0, w, h, canvas.y.data(), 0, canvas.u.data(), canvas.v.data(), 0, 0, PackPoint(w, h));
      draw.FillRect(0, w, h, canvas.y.data(), 0, canvas.u.data(), canvas.v.data(), 0, 0,
                    PackPoint(65535, h + 2));
      EXPECT_EQ(canvas.Picture(), Rows(h, std::string(w, '#'))) << w << "x" << h;
      EXPECT_EQ(canvas.u[0] == Canvas::kUntouched, w < 2 || h < 2) << w << "x" << h;
    }
  }
  uint8_t untouched = Canvas::kUntouched;
  draw.FillRect(0, 65537, 1, &untouched, 0, nullptr, nullptr, 0, 0, PackPoint(1, 1));
  EXPECT_EQ(untouched, Canvas::kUntouched);
}

OverlayShape Shape(OverlayShape::Kind kind, const WideRect& corners) {
  return {.kind = kind, .colour = kOverlayGreen, .corners = corners, .size = 1};
}

TEST(BurnIn, DrawsOutlinesAndFillsOfThePictureIntoFramesThatItCanHold) {
  using enum OverlayShape::Kind;
  OverlayList list;
  for (const OverlayShape& shape :
       {Shape(Outline, {1, 0, 6, 4}), Shape(Fill, {3, 2, 5, 4}), Shape(Disc, {0, 0, 8, 5}),
        Shape(Brackets, {0, 0, 8, 5}), Shape(Outline, {0, 1, -2, 3}), Shape(Outline, {0, 0, 7, -1}),
        Shape(Outline, {9, 0, 8, 4}), Shape(Outline, {0, 0, 0, 0}), Shape(Outline, {0, 6, 8, 5}),
        Shape(Fill, {9, 0, 30, 4})})
    list.shapes.push_back(shape);
  Canvas canvas(8, 5);
  uint8_t *const y = canvas.y.data(), *const u = canvas.u.data(), *const v = canvas.v.data();
  CYuvDraw draw;
  for (const FrameView& bad :
       {FrameView{y, 7, u, 4, v, 4}, {y, 8, u, 3, v, 4}, {y, 8, u, 4, v, -4}, {nullptr, 8, u, 4, v, 4}})
    BurnIn(draw, list, bad, 8, 5);
  BurnIn(draw, list, {y, 1 << 20, u, 1 << 20, v, 1 << 20}, 1 << 20, 5);
  EXPECT_EQ(canvas.Picture(), Rows(5, "........"));
  BurnIn(draw, list, {y, 8, u, 4, v, 4}, 8, 5);
  EXPECT_EQ(canvas.Picture(), (Rows{"#######.", ".#....#.", ".#.##.#.", ".#.##.#.", ".######."}));
}

}  // namespace
