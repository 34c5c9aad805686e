// SPDX-License-Identifier: MIT
// The fonts of SDL panes and their mosaic, one video pixel on one screen pixel.
#include <array>

#include "backends/sdl2/sdl_font.h"
#include "display/fonts.h"
#include "sdl_test.h"
#include "support/import_patch.h"

namespace {

constexpr int kWidth = 400, kHeight = 300;

class SdlOverlays : public SdlTest {
 protected:
  SdlOverlays() { pane.Start(kWidth, kHeight); }

  Pane pane{0, kWidth, kHeight};
  TestFrame frame = FlatFrame(kWidth, kHeight, 16, 128, 128);
};

TEST_F(SdlOverlays, TheMosaicRepeatsEachBlocksCornerPastTheArea) {
  for (size_t i = 0; i < frame.y.size(); ++i)
    frame.y[i] = static_cast<uint8_t>(16 + (i % kWidth * 7 + i / kWidth * 13) % 219);
  const auto word = [](float value) { return std::bit_cast<uint32_t>(value); };
  const uint32_t low[] = {word(15), word(90)}, high[] = {word(70), word(140)};
  const uint16_t type[] = {1, 4}, distance[] = {123, 45}, none[] = {0, 0};
  NIVRAL_DWSetAlgInfo(pane.handle, 2, low, low, high, high, type, distance, none, none, 3);
  NIVRAL_DWSetDsmAlgInfo(pane.handle, 2, low, high, 1, low, high, high, low, 5);
  NIVRAL_DWSetOSDText(pane.handle, 0, "Lies under the mosaics", 20, 60, 0, 0x00FF80C0);
  pane.Show(frame);
  NIVRAL_DWSetPause(pane.handle, 1);
  const ScreenShot plain = pane.Show(frame);
  NIVRAL_DWSetMosaicFlag(pane.handle, 1);
  for (const RECT& area : {RECT{101, 52, 160, 97}, {-7, -4, 60, 80}, {330, 20, 420, 60}, {0, 9, 130, 120}})
    for (const auto& [level, block] :
         {std::array{1, 3}, {4, 12}, {20, 9}, {50, 15}, {7, 21}, {44, 132}, {0, 0}, {-4, 0}}) {
      NIVRAL_DWSetMosaics(pane.handle, reinterpret_cast<const uint8_t*>(&area));
      NIVRAL_DWSetMosaicLevel(pane.handle, static_cast<uint32_t>(level));
      const ScreenShot shot = pane.Show(frame);
      const auto blocks = [side = block](LONG extent) {
        return side ? (extent + side - 1) / side * side : 0;
      };
      const LONG width = blocks(area.right - area.left), height = blocks(area.bottom - area.top);
      int wrong = 0;
      for (int y = 0; y < kHeight; ++y)
        for (int x = 0; x < kWidth; ++x) {
          const int dx = x - area.left, dy = y - area.top;
          const bool inside = dx >= 0 && dy >= 0 && dx < width && dy < height;
          const int from = inside ? std::max(x - dx % block, 0) : x;
          const int line = inside ? std::max(y - dy % block, 0) : y;
          wrong += !Near(shot.At(x, y), plain.At(from, line), 0) && !InMark(shot, from, line);
        }
      EXPECT_EQ(wrong, 0) << "level " << level << " at " << area.left;
    }
}

TTF_Font* NoFont(const char*, int) {
  return nullptr;
}
TTF_Font* NoFontInMemory(SDL_RWops* source, int, int) {
  SDL_RWclose(source);
  return nullptr;
}

TEST_F(SdlOverlays, BoxesAreDrawnWithoutLabelsWhenNoFontOpens) {
  const ImportPatch files("SDL2_ttf.dll", "TTF_OpenFont", &NoFont);
  const ImportPatch memory("SDL2_ttf.dll", "TTF_OpenFontRW", &NoFontInMemory);
  NIVRAL_DWSetOSDText(pane.handle, 0, "HHH", 250, 200, 0, 0x00FFFFFF);
  pane.SetBox(40, 60, 140, 120, 2, 123, 4);
  const auto isLit = [](const Rgb& c) { return !Near(c, {0, 0, 0}, 60); };
  const RECT lit = Find(pane.Show(frame), isLit, {10, 10, kWidth - 10, kHeight - 10}).box;
  EXPECT_TRUE(EqualRect(&lit, std::array{RECT{38, 58, 141, 121}}.data()));
}

/// A font file in the system's folder while it lives.
class PlantedFont {
 public:
  PlantedFont(const std::string& font, const std::string& file) : m_file(file) {
    const std::string from = R"(Z:\usr\share\fonts\truetype\dejavu\)" + font;
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

TEST_F(SdlTest, TheFontIsTheLookupsElseOneThatTheSystemHas) {
  EXPECT_EQ(FontPath(), FontPath());
  DeleteFileA(FontPath());
  EXPECT_FALSE(IsMonospaced()) << "the system's own font";
  const PlantedFont fallback("DejaVuSansMono.ttf", R"(C:\windows\Fonts\arial.ttf)");
  EXPECT_TRUE(IsMonospaced());
  const PlantedFont first("DejaVuSans.ttf", FontPath());
  EXPECT_FALSE(IsMonospaced());
}

}  // namespace
