// SPDX-License-Identifier: MIT
// Texts, boxes, labels and landmarks on the screen. Runs beside a D3DX whose lines are drawn, and which fails
// when asked to.
#include <bit>
#include <set>
#include <thread>

#include "display/overlay_shapes.h"
#include "fakes/d3dx_faults.h"
#include "fakes/loaded.h"
#include "pane.h"

namespace {

constexpr int kWidth = 960;
constexpr int kHeight = 720;  // texts 36 high, labels 18

constexpr Rgb kBlack{0x11, 0x0f, 0x11};
constexpr Rgb kGreenPixel{0, 255, 0};
constexpr Rgb kAmberPixel{255, 0xC5, 0};
constexpr Rgb kOrangeRedPixel{255, 0x61, 0};

bool IsRed(const Rgb& c) {
  return c.r >= 0x80 && c.g <= 0x40 && c.b <= 0x40;
}
bool IsBlue(const Rgb& c) {
  return c.b >= 0x80 && c.r <= 0x80;
}

/// Not the colour of the frame or of a shape, as far as a letter shines through.
bool IsLetter(const Rgb& c) {
  const Rgb shapes[] = {kBlack, kGreenPixel, kAmberPixel, kOrangeRedPixel};
  return std::none_of(std::begin(shapes), std::end(shapes), [&](const Rgb& s) { return Near(s, c, 2); });
}

struct FoundIn {
  int count = 0;
  PixelRect bounds{INT32_MAX, INT32_MAX, 0, 0};
};

template <class Is>
FoundIn FindIn(const ScreenShot& shot, const PixelRect& area, Is&& is) {
  FoundIn found;
  for (int y = area.top; y < area.bottom; ++y)
    for (int x = area.left; x < area.right; ++x) {
      if (!is(shot.At(x, y))) continue;
      ++found.count;
      found.bounds = {std::min(found.bounds.left, x), std::min(found.bounds.top, y),
                      std::max(found.bounds.right, x + 1), std::max(found.bounds.bottom, y + 1)};
    }
  return found;
}

struct Expected {
  int x;
  int y;
  Rgb color;
};

std::string Complain(const ScreenShot& shot, const std::vector<Expected>& pixels) {
  for (const Expected& p : pixels)
    if (const Rgb seen = shot.At(p.x, p.y); !Near(seen, p.color, 2))
      return testing::PrintToString(seen) + " instead of " + testing::PrintToString(p.color) + " at " +
             std::to_string(p.x) + "," + std::to_string(p.y);
  return "";
}

constexpr D3dxFaults kCannotMake{E_FAIL, E_FAIL, 0, 0, nullptr};

struct Box {
  float left, top, right, bottom;
};

class D3dOverlays : public testing::Test {
 protected:
  D3dOverlays() {
    *m_d3dx = {};
    m_pane.displayer.InitDraw(kWidth, kHeight, 0);
    m_pane.displayer.FreeDraw();
    m_pane.displayer.InitDraw(kWidth, kHeight, 0);
    EXPECT_EQ(m_pane.DrawTwice(m_black), 0);
  }

  void Assist(const Box& box, uint16_t type, uint16_t distance, uint16_t lineWidth) {
    const auto edges = std::bit_cast<std::array<uint32_t, 4>>(box);
    const uint16_t unused = 0;
    m_pane.displayer.SetAlgInfo(1, &edges[0], &edges[1], &edges[2], &edges[3], &type, &distance, &unused,
                                &unused, lineWidth);
  }

  void Monitor(const std::vector<std::pair<float, float>>& points, const std::vector<Box>& boxes,
               uint16_t size) {
    std::vector<uint32_t> x, y, edges[4];
    for (const auto& [px, py] : points) {
      x.push_back(std::bit_cast<uint32_t>(px));
      y.push_back(std::bit_cast<uint32_t>(py));
    }
    for (const Box& box : boxes)
      for (size_t i = 0; i < 4; ++i)
        edges[i].push_back(std::bit_cast<std::array<uint32_t, 4>>(box)[i]);
    m_pane.displayer.SetDsmAlgInfo(static_cast<int32_t>(points.size()), x.data(), y.data(),
                                   static_cast<int32_t>(boxes.size()), edges[0].data(), edges[1].data(),
                                   edges[2].data(), edges[3].data(), size);
  }

  /// A scene on a pane that starts anew: texts, boxes over each other's labels, landmarks and brackets.
  ScreenShot ShootScene(const D3dxFaults& faults) {
    *m_d3dx = faults;
    m_pane.displayer.FreeDraw();
    TestFrame white = FlatFrame(kWidth, kHeight, 235, 128, 128);
    m_pane.Draw(white);
    EXPECT_PIXEL(m_pane.window.Handle(), 0, 0, {235, 235, 235});
    m_pane.displayer.SetOSDText(0, "Side Wg 12:34", 100, 50, 0, 0x0000FF);
    m_pane.displayer.SetOSDText(5, "One two three four five six seven", 700, 120, 1, 0x0000FF);
    const auto edges = [](auto... values) { return std::array{std::bit_cast<uint32_t>(float{values})...}; };
    const std::array<uint16_t, 3> types = {1, 4, 2}, distances = {123, 456, 0}, unused{};
    m_pane.displayer.SetAlgInfo(3, edges(200.f, 300.f, 600.f).data(), edges(200.f, 190.f, 380.f).data(),
                                edges(500.f, 420.f, 640.f).data(), edges(500.f, 490.f, 400.f).data(),
                                types.data(), distances.data(), unused.data(), unused.data(), 3);
    Monitor({{700, 300}, {705, 303}, {800, 500}}, {{640, 240, 760, 340}}, 9);
    EXPECT_EQ(m_pane.Draw(m_black), 0);
    EXPECT_PIXEL(m_pane.window.Handle(), 0, 0, {kBlack});
    return m_pane.Shot();
  }

  void DrawAndExpect(const std::function<std::string(const ScreenShot&)>& complain) {
    EXPECT_EQ(m_pane.Draw(m_black), 0);
    ExpectPicture(m_pane, complain);
  }

  D3dxFaults* m_d3dx = LoadedFunction<GetD3dxFaultsFunction>("d3dx9_43.dll", "GetD3dxFaults")();
  D3DPane m_pane{kWidth, kHeight};
  TestFrame m_black = FlatFrame(kWidth, kHeight, 16, 128, 128);
};

TEST_F(D3dOverlays, TextsStandWhereTheyWerePut) {
  m_pane.displayer.SetOSDText(0, "HHHH", 100, 50, 0, 0x0000FF);
  m_pane.displayer.SetOSDText(5, "HH", 400, 100, 1, 0x0000FF);
  DrawAndExpect([](const ScreenShot& shot) -> std::string {
    const FoundIn top = FindIn(shot, {0, 0, kWidth, 300}, IsRed);
    if (top.count < 200 || top.bounds.left < 100 || top.bounds.left > 110 || top.bounds.top < 50 ||
        top.bounds.bottom > 50 + 45 || top.bounds.right > 250) {
      return "top text: " + std::to_string(top.count) + " pixels at " +
             testing::PrintToString(top.bounds.left) + "," + std::to_string(top.bounds.top);
    }
    const FoundIn bottom = FindIn(shot, {0, 300, kWidth, kHeight}, IsRed);
    return bottom.count > 100 && bottom.bounds.left >= 400 && bottom.bounds.top >= kHeight - 100 &&
                   bottom.bounds.bottom <= kHeight - 100 + 45
               ? ""
               : "bottom text at " + std::to_string(bottom.bounds.top);
  });
  m_pane.displayer.SetOSDText(0, "", 100, 50, 0, 0x0000FF);
  DrawAndExpect([](const ScreenShot& shot) {
    return FindIn(shot, {0, 0, kWidth, 300}, IsRed).count == 0 ? "" : "a removed text is still there";
  });
}

D3DDisplayer* g_setWhileDrawing = nullptr;
bool g_wasSet = false;

/// In the middle of drawing a text: sets another from a thread of its own.
void SetAnotherText() {
  D3DDisplayer* displayer = std::exchange(g_setWhileDrawing, nullptr);
  if (!displayer) return;
  static const HANDLE set = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  std::thread([=] {
    displayer->SetOSDText(1, "other", 9, 9, 0, 0);
    SetEvent(set);
  }).detach();
  g_wasSet = WaitForSingleObject(set, 60000) == WAIT_OBJECT_0;
}

TEST_F(D3dOverlays, TextsCanBeSetWhileOthersAreDrawn) {
  m_d3dx->onDrawText = &SetAnotherText;
  m_pane.displayer.SetOSDText(0, "text", 100, 50, 0, 0x0000FF);
  g_setWhileDrawing = &m_pane.displayer;
  EXPECT_EQ(m_pane.Draw(m_black), 0);
  EXPECT_TRUE(g_wasSet);
}

TEST_F(D3dOverlays, LookTheSameWhateverD3dxCanDo) {
  const ScreenShot all = ShootScene({});
  for (const D3dxFaults& faults : {kCannotMake, D3dxFaults{0, 0, E_FAIL, E_NOTIMPL, nullptr}}) {
    const ScreenShot own = ShootScene(faults);
    int different = 0;
    for (int y = 0; y < kHeight; ++y)
      for (int x = 0; x < kWidth; ++x)
        if (!IsLetter(all.At(x, y)) && !IsLetter(own.At(x, y)) && !Near(all.At(x, y), own.At(x, y), 0))
          ++different;
    EXPECT_EQ(different, 0);
    for (const PixelRect& text : {PixelRect{0, 0, kWidth, 150},
                                  {0, 600, kWidth, kHeight},
                                  {190, 170, 290, 199},
                                  {590, 360, 700, 380},
                                  {300, 470, 420, 500}}) {
      const PixelRect a = FindIn(all, text, IsLetter).bounds;
      const PixelRect b = FindIn(own, text, IsLetter).bounds;
      EXPECT_LT(a.left, a.right) << "nothing was written at " << text.left << "," << text.top;
      for (const auto& [edge, other] : {std::pair{a.left, b.left}, {a.top, b.top}, {a.right, b.right}})
        EXPECT_NEAR(edge, other, 2) << "of the text at " << text.left << "," << text.top;
      EXPECT_NEAR(a.bottom, b.bottom, 2);
    }
  }
}

TEST_F(D3dOverlays, AnyTextIsSurvived) {
  std::string lines;
  for (int i = 0; i < 170; ++i)
    lines += "W\n\t";
  const std::string texts[] = {std::string(511, 'W'),    std::string(511, ' '), lines, "\n", "i i W",
                               "\xFC\xE4\x80\xDF & \x01"};
  for (const D3dxFaults& faults : {D3dxFaults{}, kCannotMake}) {
    *m_d3dx = faults;
    m_pane.displayer.FreeDraw();
    for (const std::string& text : texts) {
      // Beside the right edge not one character has room.
      for (const uint32_t x : {0u, kWidth - 20u, kWidth - 2u, kWidth + 5u, 0x80000000u, 0xFFFFFFFFu}) {
        m_pane.displayer.SetOSDText(0, text.c_str(), x, 0x7FFFFFF0u, 1, 0x0000FF);
        m_pane.displayer.SetOSDText(1, text.c_str(), x, 5, 0, 0x0000FF);
        EXPECT_EQ(m_pane.Draw(m_black), 0) << x << text;
      }
    }
    for (uint16_t distance = 1; distance < 4000; distance = static_cast<uint16_t>(distance + 37)) {
      Assist({kWidth - 3.0f, 200, kWidth, 500}, 1, distance, 1);  // more labels than are kept
      EXPECT_EQ(m_pane.Draw(m_black), 0);
    }
  }
}

TEST_F(D3dOverlays, BoxesHaveOutlinesAndLabels) {
  Assist({200, 200, 500, 500}, 1, 123, 3);
  DrawAndExpect([](const ScreenShot& shot) -> std::string {
    const std::string wrong = Complain(shot, {{350, 198, kBlack},
                                              {350, 199, kOrangeRedPixel},
                                              {350, 200, kOrangeRedPixel},
                                              {350, 201, kOrangeRedPixel},
                                              {350, 202, kBlack},
                                              {199, 350, kOrangeRedPixel},
                                              {201, 350, kOrangeRedPixel},
                                              {202, 350, kBlack},
                                              {501, 350, kOrangeRedPixel},
                                              {502, 350, kBlack},
                                              {400, 501, kOrangeRedPixel},
                                              {350, 350, kBlack},
                                              {263, 182, kAmberPixel},
                                              {264, 190, kBlack},
                                              {262, 180, kBlack},
                                              {372, 483, kAmberPixel},
                                              {373, 490, kBlack},
                                              {327, 490, kBlack}});
    if (!wrong.empty()) return wrong;
    if (FindIn(shot, {200, 181, 264, 199}, IsBlue).count < 20) return "no type on its label";
    return FindIn(shot, {328, 482, 373, 500}, IsBlue).count < 10 ? "no distance on its label" : "";
  });
}

TEST_F(D3dOverlays, LandmarksAreDiscs) {
  std::vector<std::pair<float, float>> points = {{100.7f, 100.2f}, {600, 400}, {0, 719}, {-500, 20}};
  while (points.size() < 68)
    points.emplace_back(static_cast<float>(10 * points.size()), 600.0f);
  for (uint16_t size : {3, 40}) {  // the larger ones are more than one batch
    std::set<std::pair<int64_t, int64_t>> green;
    for (const auto& [px, py] : points) {
      const int64_t x = static_cast<int>(px), y = static_cast<int>(py);
      RectList parts;
      AppendPixels(parts,
                   {.kind = OverlayShape::Kind::Disc,
                    .color = kOverlayGreen,
                    .corners = WideRect{x, y, x, y}.Grown(size),
                    .size = size},
                   kWidth, kHeight);
      for (const PixelRect& part : parts)
        for (int32_t row = part.top; row < part.bottom; ++row)
          for (int32_t column = part.left; column < part.right; ++column)
            green.emplace(column, row);
    }
    Monitor(points, {}, size);
    DrawAndExpect([&](const ScreenShot& shot) -> std::string {
      for (int y = 0; y < kHeight; ++y)
        for (int x = 0; x < kWidth; ++x)
          if (!Near(shot.At(x, y), green.contains({x, y}) ? kGreenPixel : kBlack, 2))
            return "radius " + std::to_string(size) + " is wrong at " + std::to_string(x) + "," +
                   std::to_string(y);
      return "";
    });
  }
}

TEST_F(D3dOverlays, MonitoredBoxesAreNestedBrackets) {
  Monitor({}, {{300, 300, 400, 450}}, 3);
  DrawAndExpect([](const ScreenShot& shot) {
    return Complain(shot, {{305, 298, kBlack},
                           {305, 299, kGreenPixel},
                           {305, 300, kGreenPixel},
                           {305, 301, kGreenPixel},
                           {305, 302, kBlack},
                           {350, 299, kBlack},
                           {350, 300, kBlack},
                           {299, 305, kGreenPixel},
                           {301, 310, kGreenPixel},
                           {299, 375, kBlack},
                           {401, 440, kGreenPixel},
                           {395, 451, kGreenPixel},
                           {305, 451, kGreenPixel},
                           {395, 299, kGreenPixel}});
  });
}

TEST_F(D3dOverlays, AnyNumbersAreSurvived) {
  constexpr float kHuge = 3e38f;
  for (uint16_t size : {uint16_t{0}, uint16_t{65535}}) {
    Assist({-kHuge, -kHuge, kHuge, kHuge}, 2, 65535, size);
    Monitor({{kHuge, -kHuge}, {480, 360}, {std::bit_cast<float>(0x7FC00000u), 5}},
            {{-kHuge, -kHuge, kHuge, kHuge}, {kHuge, 0, -kHuge, 9}}, size);
    EXPECT_EQ(m_pane.Draw(m_black), 0);
  }
  EXPECT_EQ(m_pane.Draw(m_black), 0);
}

}  // namespace
