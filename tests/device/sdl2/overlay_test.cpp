// SPDX-License-Identifier: MIT
// Overlays as the screen shows them, one video pixel on one screen pixel.
#include <gmock/gmock.h>

#include <array>
#include <bit>
#include <cstring>
#include <memory>
#include <string>

#include "backends/sdl2/sdl_font.h"
#include "backends/sdl2/sdl_library.h"
#include "display/box_layout.h"
#include "display/font_path.h"
#include "display/records.h"
#include "nivral/nivral.h"
#include "support/frames.h"
#include "support/import_patch.h"
#include "support/one_box.h"
#include "support/screen.h"
#include "support/test_window.h"

namespace {

constexpr int kWidth = 400;
constexpr int kHeight = 300;
constexpr DisplayMap kOneToOne{kWidth, kHeight, kWidth, kHeight};
constexpr int kMark = 4;  ///< side of the square in the last corner that tells frames apart
constexpr Rgb kBlack{0, 0, 0};
constexpr Rgb kGreen{0, 255, 0};

class SdlLibrary : public testing::Environment {
 public:
  void SetUp() override { NIVRAL_InitializeEx(1); }
  void TearDown() override { NIVRAL_UnInitialize(); }
};
const auto* const g_library = testing::AddGlobalTestEnvironment(new SdlLibrary);

/// A pane that shows a black clip without scaling.
class Overlay : public testing::Test {
 protected:
  Overlay() {
    NIVRAL_DWOpenDrawEx(&handle, 0);
    NIVRAL_DWSetHwnd(handle, window.Handle());
    NIVRAL_DWInitDraw(handle, kWidth, kHeight, 0);
    Draw();
    Pump(30);
  }
  ~Overlay() override { NIVRAL_DWCloseDraw(handle); }

  /// Every frame has another shade in its last corner, by which it is known on the screen.
  void Draw() {
    m_mark = m_mark == 56 ? 24 : m_mark + 8;
    for (int row = frame.height - kMark; row < frame.height; ++row)
      std::fill_n(frame.y.end() - (frame.height - row) * frame.width + frame.width - kMark, kMark,
                  static_cast<uint8_t>(m_mark));
    NIVRAL_DWDrawYUV420(handle, frame.y.data(), static_cast<uint32_t>(frame.strideY), frame.u.data(),
                        frame.v.data(), static_cast<uint32_t>(frame.strideUV), 0, 0);
  }

  /// Waits for the last frame and copies the screen.
  ScreenShot Look() {
    Pump(5);
    const int shade = (m_mark - 16) * 298 / 256;
    const Rgb grey{shade, shade, shade};
    const Rgb seen = WaitForPixel(window.Handle(), kWidth - 2, kHeight - 2, grey, 2, 15000);
    EXPECT_TRUE(Near(seen, grey, 2)) << "the frame did not reach the screen";
    return ScreenShot(ClientOnScreen(window.Handle()));
  }

  ScreenShot DrawAndLook() {
    Draw();
    return Look();
  }

  void SetBoxes(const AlgRecord& r) {
    const auto words = [](const float* edges) {
      std::array<uint32_t, kMaxBoxes> array;
      std::memcpy(array.data(), edges, sizeof(array));
      return array;
    };
    NIVRAL_DWSetAlgInfo(handle, r.count, words(r.left).data(), words(r.top).data(), words(r.right).data(),
                        words(r.bottom).data(), r.classId, r.distance, r.third, r.fourth, r.lineWidth);
  }

  int m_mark = 16;
  TestWindow window{kWidth, kHeight};
  TestFrame frame = FlatFrame(kWidth, kHeight, 16, 128, 128);
  void* handle = nullptr;
};

bool InMark(int x, int y) {
  return x >= kWidth - kMark && y >= kHeight - kMark;
}

/// Extent of what is not black, all zero when everything is.
RECT Lit(const ScreenShot& shot) {
  RECT box{shot.Width(), shot.Height(), 0, 0};
  for (int y = 0; y < shot.Height(); ++y) {
    for (int x = 0; x < shot.Width(); ++x) {
      if (Near(shot.At(x, y), kBlack, 60) || InMark(x, y)) continue;
      box = {std::min<LONG>(box.left, x), std::min<LONG>(box.top, y), std::max<LONG>(box.right, x + 1),
             std::max<LONG>(box.bottom, y + 1)};
    }
  }
  return box.right ? box : RECT{};
}

/// Pixels that have nearly this colour.
int CountNear(const ScreenShot& shot, const Rgb& color, int tolerance) {
  int count = 0;
  for (int y = 0; y < shot.Height(); ++y) {
    for (int x = 0; x < shot.Width(); ++x)
      count += Near(shot.At(x, y), color, tolerance) ? 1 : 0;
  }
  return count;
}

using OverlayText = Overlay;
using OverlayMosaic = Overlay;
using OverlayBoxes = Overlay;

TEST_F(OverlayText, ShowsAtItsPlaceInItsColourUntilEmpty) {
  NIVRAL_DWSetOSDText(handle, 0, "HHH", 50, 40, 0, 0x000080FF);
  const ScreenShot shot = DrawAndLook();
  const RECT lit = Lit(shot);
  // Font size 20: capitals some 15 pixels high, a few below the top of the line.
  EXPECT_NEAR(lit.left, 52, 2);
  EXPECT_NEAR(lit.top, 45, 3);
  EXPECT_NEAR(lit.bottom - lit.top, 15, 2);
  EXPECT_NEAR(lit.right - lit.left, 42, 8);
  EXPECT_GT(CountNear(shot, {255, 128, 0}, 4), 60);

  NIVRAL_DWSetOSDText(handle, 0, "", 50, 40, 0, 0x000080FF);
  EXPECT_EQ(Lit(DrawAndLook()).right, 0);
}

TEST_F(OverlayText, CountsFromTheBottomAndHidesNegativePlaces) {
  NIVRAL_DWSetOSDText(handle, 5, "HHH", 50, 40, 0, 0x00FFFFFF);
  const RECT fromTop = Lit(DrawAndLook());
  NIVRAL_DWSetOSDText(handle, 5, "HHH", 50, kHeight - 40, 1, 0x00FFFFFF);
  const RECT fromBottom = Lit(DrawAndLook());
  EXPECT_TRUE(EqualRect(&fromTop, &fromBottom));
  for (const auto& [x, y, anchor] : {std::array<uint32_t, 3>{UINT32_MAX, 40, 0},
                                     {50, UINT32_MAX, 0},
                                     {50, UINT32_MAX, 1},
                                     {50, 0, 1},
                                     {kWidth, 40, 0}}) {
    NIVRAL_DWSetOSDText(handle, 5, "HHH", x, y, anchor, 0x00FFFFFF);
    EXPECT_EQ(Lit(DrawAndLook()).right, 0) << x << " " << y << " " << anchor;
  }
}

TEST_F(OverlayText, BreaksLinesAtTheRightEdge) {
  NIVRAL_DWSetOSDText(handle, 0, "HHHH HHHH", 300, 10, 0, 0x00FFFFFF);
  const RECT lit = Lit(DrawAndLook());
  EXPECT_GT(lit.bottom - lit.top, 30);
  EXPECT_LE(lit.right, kWidth);
  NIVRAL_DWSetOSDText(handle, 0, "HHHH HHHH", 100, 10, 0, 0x00FFFFFF);
  const RECT oneLine = Lit(DrawAndLook());
  EXPECT_LT(oneLine.bottom - oneLine.top, 20);
}

TEST_F(OverlayText, SurvivesAnyBytesAndANewRenderer) {
  std::string longest(600, '\xE9');
  longest[510] = '\x81';
  NIVRAL_DWSetOSDText(handle, 1, longest.c_str(), 0, 100, 0, 0x00FFFFFF);
  NIVRAL_DWSetOSDText(handle, 2, std::string(511, '\n').c_str(), 0, 100, 0, 0x00FFFFFF);
  NIVRAL_DWSetOSDText(handle, 3, "\x01\x7F\x80\xFF", 0, 100, 0, 0x00FFFFFF);
  EXPECT_GT(Lit(DrawAndLook()).right, 380);
  for (int index = 1; index < 4; ++index)
    NIVRAL_DWSetOSDText(handle, index, "", 0, 0, 0, 0);

  NIVRAL_DWSetOSDText(handle, 0, "HHH", 50, 40, 0, 0x00FFFFFF);
  const RECT before = Lit(DrawAndLook());
  frame = FlatFrame(200, 150, 16, 128, 128);
  EXPECT_EQ(NIVRAL_DWInitDraw(handle, 200, 150, 0), 0u);
  Draw();
  const RECT after = Lit(DrawAndLook());
  EXPECT_TRUE(EqualRect(&before, &after));
}

TEST_F(OverlayMosaic, RepeatsEachBlocksCornerPastTheArea) {
  for (size_t i = 0; i < frame.y.size(); ++i)
    frame.y[i] = static_cast<uint8_t>(16 + (i % kWidth * 7 + i / kWidth * 13) % 219);
  const ScreenShot plain = DrawAndLook();
  const RECT area{101, 52, 160, 97};
  NIVRAL_DWSetMosaics(handle, reinterpret_cast<const uint8_t*>(&area));
  NIVRAL_DWSetMosaicFlag(handle, 1);
  for (const auto& [level, block] :
       {std::array{1, 3}, {4, 12}, {20, 9}, {50, 15}, {7, 21}, {0, 0}, {-4, 0}}) {
    NIVRAL_DWSetMosaicLevel(handle, static_cast<uint32_t>(level));
    const ScreenShot shot = DrawAndLook();
    int wrong = 0;
    for (int y = 0; y < kHeight; ++y) {
      for (int x = 0; x < kWidth; ++x) {
        int fromX = x, fromY = y;
        if (block) {
          const int columns = (area.right - area.left + block - 1) / block;
          const int rows = (area.bottom - area.top + block - 1) / block;
          const int dx = x - area.left, dy = y - area.top;
          if (dx >= 0 && dy >= 0 && dx < columns * block && dy < rows * block)
            fromX = x - dx % block, fromY = y - dy % block;
        }
        wrong += Near(shot.At(x, y), plain.At(fromX, fromY), 0) || InMark(x, y) ? 0 : 1;
      }
    }
    EXPECT_EQ(wrong, 0) << "level " << level;
  }
  NIVRAL_DWSetMosaicLevel(handle, 4);
  NIVRAL_DWSetMosaicFlag(handle, 0);
  const ScreenShot off = DrawAndLook();
  EXPECT_TRUE(Near(off.At(107, 57), plain.At(107, 57), 0));
}

/// Every pixel against the layout's rectangles; letters may lie on the labels.
void ExpectRects(const ScreenShot& shot, const AlgLayout& layout) {
  std::vector<Rgb> expected(kWidth * kHeight, kBlack);
  size_t at = 0;
  for (const ColorRun& run : layout.runs) {
    for (; at < run.end; ++at) {
      const PixelRect& r = layout.rects[at];
      for (int y = r.top; y < r.bottom; ++y) {
        std::fill_n(expected.begin() + y * kWidth + r.left, r.Width(),
                    Rgb{run.color.r, run.color.g, run.color.b});
      }
    }
  }
  int wrong = 0;
  int letters = 0;
  for (int i = 0; i < kWidth * kHeight; ++i) {
    if (InMark(i % kWidth, i / kWidth)) continue;
    const Rgb seen = shot.At(i % kWidth, i / kWidth);
    const Rgb& wanted = expected[static_cast<size_t>(i)];
    const bool letter = wanted.g > 0 ? seen.b > 0 : seen.b > 0 && seen.r == 0 && seen.g == 0;
    if (letter)
      ++letters;
    else
      wrong += Near(seen, wanted, 0) ? 0 : 1;
  }
  EXPECT_EQ(wrong, 0);
  EXPECT_EQ(letters > 20, !layout.classLabels.empty()) << letters;
}

TEST_F(OverlayBoxes, ShowExactRectanglesAndLabels) {
  AlgRecord record = OneBox(40.7f, 60.2f, 140.9f, 120.4f, 2, 123, 4);
  record.count = 3;
  record.left[1] = 200, record.top[1] = 5, record.right[1] = 260, record.bottom[1] = 40;
  record.classId[1] = 1, record.distance[1] = 51;
  record.left[2] = 130, record.top[2] = 100, record.right[2] = 500, record.bottom[2] = 280;
  record.classId[2] = 0, record.distance[2] = 700;
  AlgLayout layout;
  LayoutAlgRecord(layout, record, kOneToOne, true);
  SetBoxes(record);
  ExpectRects(DrawAndLook(), layout);
}

TEST_F(OverlayBoxes, FollowTheTimingOnTheScreen) {
  const auto lit = [&] { return Lit(DrawAndLook()).right != 0; };
  SetBoxes(OneBox(40, 60, 140, 120, 2, 0, 2));
  EXPECT_TRUE(lit());
  EXPECT_FALSE(lit());
  SetBoxes(OneBox(40, 60, 140, 120, 2, 0, 2));
  Draw();
  EXPECT_TRUE(lit());
  Sleep(1000);
  EXPECT_FALSE(lit());
  NIVRAL_DWSetPause(handle, 1);
  SetBoxes(OneBox(300, 60, 390, 120, 2, 0, 2));
  EXPECT_EQ(Lit(DrawAndLook()).right, 141);
  NIVRAL_DWSetPause(handle, 0);
  EXPECT_EQ(Lit(DrawAndLook()).right, 391);
}

TEST_F(OverlayBoxes, ShowLandmarksAndFaceCorners) {
  DsmRecord record{};
  record.pointSize = 3;
  record.pointCount = 4;
  record.boxCount = 1;
  for (int i = 0; i < 4; ++i)
    record.x[i] = static_cast<float>(50 + 30 * i), record.y[i] = 80;
  record.left[0] = 160, record.top[0] = 90, record.right[0] = 260, record.bottom[0] = 250;
  AlgLayout layout;
  LayoutDsmRecord(layout.rects, record, kOneToOne);
  layout.runs.push_back({kOverlayGreen, layout.rects.size()});
  const auto* words = reinterpret_cast<const uint32_t*>(&record.x);
  const auto* edges = reinterpret_cast<const uint32_t*>(&record.left);
  NIVRAL_DWSetDsmAlgInfo(handle, 4, words, words + kMaxLandmarks, 1, edges, edges + kMaxBoxes,
                         edges + 2 * kMaxBoxes, edges + 3 * kMaxBoxes, 3);
  const ScreenShot shot = DrawAndLook();
  ExpectRects(shot, layout);
  EXPECT_TRUE(Near(shot.At(50, 80), kGreen, 0) && Near(shot.At(110, 80), kGreen, 0));
  EXPECT_TRUE(Near(shot.At(80, 80), kBlack, 0) && Near(shot.At(140, 80), kBlack, 0));
}

TTF_Font* NoFont(const char*, int) {
  return nullptr;
}
TTF_Font* NoFontInMemory(SDL_RWops* source, int, int) {
  SDL_RWclose(source);
  return nullptr;
}

TEST_F(OverlayBoxes, AreDrawnWithoutLabelsWhenNoFontOpens) {
  const ImportPatch files("SDL2_ttf.dll", "TTF_OpenFont", &NoFont);
  const ImportPatch memory("SDL2_ttf.dll", "TTF_OpenFontRW", &NoFontInMemory);
  const AlgRecord record = OneBox(40, 60, 140, 120, 2, 123, 4);
  AlgLayout layout;
  LayoutAlgRecord(layout, record, kOneToOne, false);
  NIVRAL_DWSetOSDText(handle, 0, "HHH", 250, 200, 0, 0x00FFFFFF);
  SetBoxes(record);
  ExpectRects(DrawAndLook(), layout);
}

/// A font file in the system's folder while it lives.
class PlantedFont {
 public:
  PlantedFont(const char* font, const std::string& file) : m_file(file) {
    const std::string from = std::string(R"(Z:\usr\share\fonts\truetype\dejavu\)") + font;
    EXPECT_TRUE(CopyFileA(from.c_str(), file.c_str(), TRUE)) << from << " " << file;
  }
  ~PlantedFont() { DeleteFileA(m_file.c_str()); }

 private:
  std::string m_file;
};

bool IsMonospaced() {
  SdlFont font;
  EXPECT_TRUE(font.SetSize(12));
  return font.WidthOf(L"iiii") == font.WidthOf(L"MMMM");
}

TEST(Font, IsTheLookupsElseOneThatTheSystemHas) {
  EXPECT_EQ(FontPath(), FontPath());
  DeleteFileA(FontPath());
  EXPECT_FALSE(IsMonospaced()) << "the system's own font";
  const PlantedFont fallback("DejaVuSansMono.ttf", R"(C:\windows\Fonts\arial.ttf)");
  EXPECT_TRUE(IsMonospaced());
  const PlantedFont first("DejaVuSans.ttf", FontPath());
  EXPECT_FALSE(IsMonospaced());
}

TEST(Font, OutlivesARestartOfTheLibrary) {
  SdlFont font;
  EXPECT_TRUE(font.SetSize(12));
  const int width = font.WidthOf(L"12.3m");
  StopSdl();
  StartSdl();
  EXPECT_TRUE(font.SetSize(12));
  EXPECT_EQ(font.WidthOf(L"12.3m"), width);
  EXPECT_FALSE(font.SetSize(0));
  StopSdl();
  StartSdl();
}

}  // namespace
