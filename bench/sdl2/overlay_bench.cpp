// SPDX-License-Identifier: MIT
// Milliseconds per 1280x720 frame without overlays, with them drawn the straightforward way (text rendered
// every frame, mosaic and discs as points), and with them drawn by the library. Run with
// WINE_D3D_CONFIG=csmt=0, or Wine moves the work to a thread of its own. NIVRAL_BENCH_FRAMES sets the number
// of frames.
#include <SDL.h>
#include <SDL_ttf.h>

#include <cstdlib>

#include "alternate.h"
#include "backends/sdl2/sdl_library.h"
#include "backends/sdl2/sdl_overlays.h"
#include "display/font_path.h"
#include "display/osd_layout.h"
#include "support/frames.h"
#include "support/test_window.h"

namespace {

constexpr DisplayMap kMap{1280, 720, 1280, 720};
constexpr PixelRect kMosaic{480, 270, 800, 450};
constexpr int32_t kBlock = 9;

struct Scene {
  SdlOverlays::TextItems texts{};
  AlgRecord alg{};
  DsmRecord dsm{};

  Scene() {
    for (uint32_t i = 0; i < kTextItemCount; ++i) {
      std::snprintf(texts[i].text, sizeof(texts[i].text), "Channel %u  2024-05-01 12:00:0%u", i, i);
      texts[i].x = 40;
      texts[i].y = 20 + 60 * i;
      texts[i].color = 0x00FFFFFF;
    }
    alg.count = kMaxBoxes;
    alg.lineWidth = 2;
    for (int i = 0; i < kMaxBoxes; ++i) {
      alg.left[i] = static_cast<float>(60 + 95 * i), alg.right[i] = alg.left[i] + 80;
      alg.top[i] = 480, alg.bottom[i] = 560;
      alg.classId[i] = static_cast<uint16_t>(1 + i % 7),
      alg.distance[i] = static_cast<uint16_t>(100 + 11 * i);
    }
    dsm.pointSize = 3;
    dsm.pointCount = kMaxLandmarks;
    for (int i = 0; i < kMaxLandmarks; ++i)
      dsm.x[i] = static_cast<float>(900 + i * 4), dsm.y[i] = static_cast<float>(100 + i * 37 % 140);
    dsm.boxCount = 1;
    dsm.left[0] = 880, dsm.top[0] = 80, dsm.right[0] = 1200, dsm.bottom[0] = 260;
  }
};

class Straightforward {
 public:
  explicit Straightforward(SDL_Renderer* renderer)
      : m_renderer(renderer),
        m_osdFont(TTF_OpenFont(FontPath(), OsdFontSize(720))),
        m_labelFont(TTF_OpenFont(FontPath(), kLabelFontSize)) {}
  ~Straightforward() {
    TTF_CloseFont(m_osdFont);
    TTF_CloseFont(m_labelFont);
  }
  Straightforward(const Straightforward&) = delete;
  Straightforward& operator=(const Straightforward&) = delete;

  void Draw(const Scene& scene) {
    for (const TextItem& item : scene.texts)
      Text(m_osdFont, item.text, static_cast<int>(item.x), static_cast<int>(item.y), {255, 255, 255, 255});
    Boxes(scene.alg);
    SDL_SetRenderDrawColor(m_renderer, 0, 255, 0, 0);
    for (int i = 0; i < scene.dsm.pointCount; i += 2)
      Disc(static_cast<int>(scene.dsm.x[i]), static_cast<int>(scene.dsm.y[i]), scene.dsm.pointSize);
    Mosaic();
  }

 private:
  void Text(TTF_Font* font, const char* text, int x, int y, SDL_Color color) {
    const SdlSurface surface(
        TTF_RenderText_Blended_Wrapped(font, text, color, static_cast<Uint32>(1280 - x)));
    const SdlTexture texture(SDL_CreateTextureFromSurface(m_renderer, surface.get()));
    const SDL_Rect target{x, y, surface->w, surface->h};
    SDL_RenderCopy(m_renderer, texture.get(), nullptr, &target);
  }

  void Boxes(const AlgRecord& record) {
    AlgLayout layout;
    LayoutAlgRecord(layout, record, kMap, true);
    size_t at = 0;
    for (const ColorRun& run : layout.runs) {
      SDL_SetRenderDrawColor(m_renderer, run.color.r, run.color.g, run.color.b, 0);
      for (; at < run.end; ++at) {
        const SDL_Rect rect = ToSdl(layout.rects[at]);
        SDL_RenderFillRect(m_renderer, &rect);
      }
    }
    for (const auto* labels : {&layout.classLabels, &layout.distanceLabels}) {
      for (const OverlayLabel& label : *labels)
        Text(m_labelFont, label.text, label.x, label.y, {0, 0, 255, 255});
    }
  }

  void Disc(int x, int y, int r) {
    for (int dx = r; dx > -r; --dx) {
      for (int dy = r; dy > -r; --dy) {
        if (dx * dx + dy * dy <= r * r) SDL_RenderDrawPoint(m_renderer, x + dx, y + dy);
      }
    }
  }

  void Mosaic() {
    const SDL_Rect area = ToSdl(kMosaic);
    std::vector<uint8_t> pixels(static_cast<size_t>(area.w * area.h * 4));
    SDL_RenderReadPixels(m_renderer, &area, SDL_PIXELFORMAT_ABGR8888, pixels.data(), area.w * 4);
    for (int y = 0; y < area.h; y += kBlock) {
      for (int x = 0; x < area.w; x += kBlock) {
        const uint8_t* p = &pixels[static_cast<size_t>((y * area.w + x) * 4)];
        for (int i = 0; i < kBlock * kBlock; ++i) {
          SDL_SetRenderDrawColor(m_renderer, p[0], p[1], p[2], 0);
          SDL_RenderDrawPoint(m_renderer, area.x + x + i % kBlock, area.y + y + i / kBlock);
        }
      }
    }
  }

  SDL_Renderer* m_renderer;
  TTF_Font* m_osdFont;
  TTF_Font* m_labelFont;
};

void DrawByLibrary(SdlOverlays& overlays, SDL_Renderer* renderer, const Scene& scene) {
  overlays.DrawTexts(renderer, scene.texts, kMap);
  overlays.DrawAlg(renderer, scene.alg, kMap);
  overlays.DrawDsm(renderer, scene.dsm, kMap);
  overlays.DrawMosaic(renderer, LayoutMosaic(kMosaic, kBlock, 1280, 720));
  overlays.EndFrame();
}

void Run(int frames) {
  TestWindow window(1280, 720);
  TestFrame frame = GradientFrame(1280, 720);
  const SdlWindow sdlWindow(SDL_CreateWindowFrom(window.Handle()));
  const SdlRenderer renderer(SDL_CreateRenderer(sdlWindow.get(), -1, SDL_RENDERER_ACCELERATED));
  const SdlTexture video(
      SDL_CreateTexture(renderer.get(), SDL_PIXELFORMAT_YV12, SDL_TEXTUREACCESS_STREAMING, 1280, 720));
  const Scene scene;
  Straightforward straightforward(renderer.get());
  SdlOverlays overlays;
  const auto show = [&](const std::function<void()>& drawOverlays) {
    SDL_UpdateYUVTexture(video.get(), nullptr, frame.y.data(), frame.strideY, frame.u.data(), frame.strideUV,
                         frame.v.data(), frame.strideUV);
    SDL_RenderCopy(renderer.get(), video.get(), nullptr, nullptr);
    drawOverlays();
    SDL_RenderPresent(renderer.get());
  };
  const std::vector<double> ms =
      MedianMs({{"none", [&] { show([] {}); }},
                {"straightforward", [&] { show([&] { straightforward.Draw(scene); }); }},
                {"library", [&] { show([&] { DrawByLibrary(overlays, renderer.get(), scene); }); }}},
               frames);
  std::printf("frame without overlays %.2f ms; added: straightforward %.2f ms, library %.2f ms, ratio %.1f\n",
              ms[0], ms[1] - ms[0], ms[2] - ms[0], (ms[1] - ms[0]) / (ms[2] - ms[0]));
}

}  // namespace

int main() {
  const char* frames = std::getenv("NIVRAL_BENCH_FRAMES");
  StartSdl();
  Run(frames ? std::atoi(frames) : 60);
  StopSdl();
}
