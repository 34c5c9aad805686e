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
#include "display/fonts.h"
#include "display/records.h"
#include "nivral/nivral.h"
#include "support/import_patch.h"
#include "support/one_box.h"
#include "support/pane.h"

namespace {

constexpr int kWidth = 400;
constexpr int kHeight = 300;
constexpr Rgb kBlack{0, 0, 0};

class SdlLibrary : public testing::Environment {
 public:
  void SetUp() override { NIVRAL_InitializeEx(1); }
  void TearDown() override { NIVRAL_UnInitialize(); }
};
const auto* const g_library = testing::AddGlobalTestEnvironment(new SdlLibrary);

/// A pane that shows a black clip without scaling.
class Overlay : public testing::Test {
 protected:
  Overlay() { pane.Start(kWidth, kHeight); }
  ScreenShot DrawAndLook() { return pane.Show(frame); }

  void SetBoxes(const AlgRecord& r) {
    const auto words = [](const float* edges) {
      std::array<uint32_t, kMaxBoxes> array;
      std::memcpy(array.data(), edges, sizeof(array));
      return array;
    };
    NIVRAL_DWSetAlgInfo(handle, r.count, words(r.left).data(), words(r.top).data(), words(r.right).data(),
                        words(r.bottom).data(), r.classId, r.distance, r.third, r.fourth, r.lineWidth);
  }

  Pane pane{0, kWidth, kHeight};
  void* const handle = pane.handle;
  TestFrame frame = FlatFrame(kWidth, kHeight, 16, 128, 128);
};

/// Extent of what is not black, all zero when everything is.
RECT Lit(const ScreenShot& shot) {
  RECT box{shot.Width(), shot.Height(), 0, 0};
  for (int y = 0; y < shot.Height(); ++y) {
    for (int x = 0; x < shot.Width(); ++x) {
      if (Near(shot.At(x, y), kBlack, 60) || InMark(shot, x, y)) continue;
      box = {std::min<LONG>(box.left, x), std::min<LONG>(box.top, y), std::max<LONG>(box.right, x + 1),
             std::max<LONG>(box.bottom, y + 1)};
    }
  }
  return box.right ? box : RECT{};
}

using OverlayText = Overlay;
using OverlayMosaic = Overlay;
using OverlayBoxes = Overlay;

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
        wrong += Near(shot.At(x, y), plain.At(fromX, fromY), 0) || InMark(shot, x, y) ? 0 : 1;
      }
    }
    EXPECT_EQ(wrong, 0) << "level " << level;
  }
  NIVRAL_DWSetMosaicLevel(handle, 4);
  NIVRAL_DWSetMosaicFlag(handle, 0);
  const ScreenShot off = DrawAndLook();
  EXPECT_TRUE(Near(off.At(107, 57), plain.At(107, 57), 0));
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
  NIVRAL_DWSetOSDText(handle, 0, "HHH", 250, 200, 0, 0x00FFFFFF);
  SetBoxes(OneBox(40, 60, 140, 120, 2, 123, 4));
  const RECT lit = Lit(DrawAndLook()), outline{38, 58, 142, 122};
  EXPECT_TRUE(EqualRect(&lit, &outline));
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
