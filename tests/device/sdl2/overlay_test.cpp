// SPDX-License-Identifier: MIT
// The fonts of SDL panes and their mosaic, one video pixel on one screen pixel.
#include <array>
#include <optional>

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

/// The last SDL_TextureAccess whose textures can be copied onto a part of the picture.
int g_lastCopied = SDL_TEXTUREACCESS_TARGET;
int Copy(SDL_Renderer* renderer, SDL_Texture* texture, const SDL_Rect* from, const SDL_Rect* to) {
  int access = 0;
  SDL_QueryTexture(texture, nullptr, &access, nullptr, nullptr);
  const auto copy = RealFunction<decltype(SDL_RenderCopy)>("SDL2.dll", "SDL_RenderCopy");
  return to && access > g_lastCopied ? -1 : copy(renderer, texture, from, to);
}
SDL_Texture* CreateNoAtlas(SDL_Renderer* renderer, Uint32 format, int access, int width, int height) {
  const auto create = RealFunction<decltype(SDL_CreateTexture)>("SDL2.dll", "SDL_CreateTexture");
  return access == SDL_TEXTUREACCESS_STATIC ? nullptr : create(renderer, format, access, width, height);
}

int DoNotFill(SDL_Renderer*, const SDL_Rect*) {
  return -1;
}
int KnowNoSize(SDL_Renderer*, int*, int*) {
  return -1;
}

/// The driver, and whether textures fail.
class SdlRenderers : public SdlOverlays, public testing::WithParamInterface<std::pair<const char*, bool>> {};

TEST_P(SdlRenderers, RepeatTheCornersOfAMosaicsBlocksPastItsArea) {
  const auto& [driver, failing] = GetParam();
  const auto startAnew = [&] { return NIVRAL_DWFreeDraw(pane.handle), pane.Start(kWidth, kHeight); };
  SDL_SetHint(SDL_HINT_RENDER_DRIVER, driver);
  startAnew();
  for (size_t i = 0; i < frame.y.size(); ++i)
    frame.y[i] = static_cast<uint8_t>(16 + (i % kWidth * 7 + i / kWidth * 13) % 219);
  for (size_t i = frame.u.size() / 8; i < frame.u.size() * 7 / 8; ++i)
    frame.u[i] = static_cast<uint8_t>(96 + i % 64), frame.v[i] = static_cast<uint8_t>(80 + i % 97);
  pane.SetBox(15, 15, 70, 70, 1, 123, 3);
  const auto [low, high] = std::bit_cast<std::array<uint32_t, 2>>(std::array{90.0f, 140.0f});
  NIVRAL_DWSetDsmAlgInfo(pane.handle, 1, &low, &high, 1, &low, &low, &high, &high, 5);
  NIVRAL_DWSetOSDText(pane.handle, 0, "Lies under the mosaics", 20, 60, 0, 0x00FF80C0);
  pane.Show(frame);
  NIVRAL_DWSetPause(pane.handle, 1);
  const ScreenShot plain = pane.Show(frame);
  const ImportPatch copies("SDL2.dll", "SDL_RenderCopy", &Copy);
  std::optional<ImportPatch> textures;
  if (failing) textures.emplace("SDL2.dll", "SDL_CreateTexture", &CreateNoAtlas);
  g_lastCopied = failing ? SDL_TEXTUREACCESS_STREAMING : SDL_TEXTUREACCESS_TARGET;
  startAnew();
  SDL_ResetHint(SDL_HINT_RENDER_DRIVER);
  NIVRAL_DWSetMosaicFlag(pane.handle, 1);
  const auto expect = [&](const RECT& area, int level, int block) {
    NIVRAL_DWSetMosaics(pane.handle, reinterpret_cast<const uint8_t*>(&area));
    NIVRAL_DWSetMosaicLevel(pane.handle, static_cast<uint32_t>(level));
    const ScreenShot shot = pane.Show(frame);
    const auto blocks = [side = block](LONG extent) { return side ? (extent + side - 1) / side * side : 0; };
    const LONG width = blocks(area.right - area.left), height = blocks(area.bottom - area.top);
    int wrong = 0;
    for (int y = 0; y < kHeight; ++y)
      for (int x = 0; x < kWidth; ++x) {
        const int dx = x - area.left, dy = y - area.top;
        const bool inside = dx >= 0 && dy >= 0 && dx < width && dy < height;
        const int from = inside ? std::max(x - dx % block, 0) : x;
        const int line = inside ? std::max(y - dy % block, 0) : y;
        const Rgb wanted =
            inside && g_lastCopied == SDL_TEXTUREACCESS_STATIC ? Rgb{0, 0, 0} : plain.At(from, line);
        wrong += !Near(shot.At(x, y), wanted, 0) && !InMark(shot, from, line);
      }
    EXPECT_EQ(wrong, 0) << "level " << level << " at " << area.left;
  };
  for (const RECT& area : {RECT{101, 52, 160, 97}, {-7, -4, 60, 80}, {330, 20, 420, 60}, {0, 9, 130, 120}})
    for (const auto& [level, block] :
         {std::array{1, 3}, {4, 12}, {20, 9}, {50, 15}, {7, 21}, {44, 132}, {0, 0}, {-4, 0}})
      expect(area, level, block);
  g_lastCopied = SDL_TEXTUREACCESS_STATIC;
  expect({20, 40, 110, 100}, 2, 6);
  const ImportPatch fills("SDL2.dll", "SDL_RenderFillRect", &DoNotFill);
  EXPECT_EQ(pane.Draw(frame), 1u) << "presented what could not be hidden";
  g_lastCopied = SDL_TEXTUREACCESS_TARGET;
  const ImportPatch sizes("SDL2.dll", "SDL_GetRendererOutputSize", &KnowNoSize);
  EXPECT_EQ(pane.Draw(frame), 1u) << "presented with the mosaic nowhere";
}
INSTANTIATE_TEST_SUITE_P(Kinds, SdlRenderers,
                         testing::Values(std::pair{"direct3d", false}, std::pair{"software", false},
                                         std::pair{"direct3d", true}));

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

bool IsMonospaced() {
  SdlFont font;
  EXPECT_TRUE(font.SetSize(12));
  return font.WidthOf(L"iiii") == font.WidthOf(L"MMMM");
}

TEST_F(SdlTest, TheFontIsTheLookupsElseOneThatTheSystemHas) {
  EXPECT_EQ(FontPath(), FontPath());
  DeleteFileA(FontPath());
  EXPECT_FALSE(IsMonospaced()) << "the system's own font";
  const char* const files[] = {R"(C:\windows\Fonts\arial.ttf)", FontPath()};
  CopyFileA(R"(Z:\usr\share\fonts\truetype\dejavu\DejaVuSansMono.ttf)", files[0], TRUE);
  EXPECT_TRUE(IsMonospaced());
  CopyFileA(R"(Z:\usr\share\fonts\truetype\dejavu\DejaVuSans.ttf)", files[1], TRUE);
  EXPECT_FALSE(IsMonospaced());
  for (const char* file : files)
    EXPECT_TRUE(DeleteFileA(file)) << file;
}

}  // namespace
