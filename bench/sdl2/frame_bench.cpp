// SPDX-License-Identifier: MIT
// Milliseconds per frame through the library's exports and the SDL2 backend, against a program that only
// uploads, copies and presents with SDL. Run with WINE_D3D_CONFIG=csmt=0, or Wine moves the work to a thread
// of its own. NIVRAL_BENCH_FRAMES sets the number of frames.
#include <SDL.h>

#include <cstdio>
#include <cstdlib>

#include "alternate.h"
#include "backends/sdl2/sdl_objects.h"
#include "nivral/nivral.h"
#include "support/frames.h"
#include "support/test_window.h"

namespace {

class BareSdl {
 public:
  BareSdl(int width, int height, int x, int y)
      : m_window(width / 2, height / 2, x, y),
        m_sdlWindow(SDL_CreateWindowFrom(m_window.Handle())),
        m_renderer(SDL_CreateRenderer(m_sdlWindow.get(), -1, SDL_RENDERER_ACCELERATED)),
        m_texture(SDL_CreateTexture(m_renderer.get(), SDL_PIXELFORMAT_YV12, SDL_TEXTUREACCESS_STREAMING,
                                    width, height)) {}

  void Draw(TestFrame& f) {
    SDL_UpdateYUVTexture(m_texture.get(), nullptr, f.y.data(), f.strideY, f.u.data(), f.strideUV, f.v.data(),
                         f.strideUV);
    SDL_RenderClear(m_renderer.get());
    SDL_RenderCopy(m_renderer.get(), m_texture.get(), nullptr, nullptr);
    SDL_RenderPresent(m_renderer.get());
  }

 private:
  TestWindow m_window;
  SdlWindow m_sdlWindow;
  SdlRenderer m_renderer;
  SdlTexture m_texture;
};

class LibraryPane {
 public:
  LibraryPane(int width, int height, int x, int y) : m_window(width / 2, height / 2, x, y) {
    NIVRAL_DWOpenDrawEx(&m_pane, 0);
    NIVRAL_DWSetHwnd(m_pane, m_window.Handle());
    NIVRAL_DWInitDraw(m_pane, static_cast<uint32_t>(width), static_cast<uint32_t>(height), 0);
  }
  ~LibraryPane() { NIVRAL_DWCloseDraw(m_pane); }
  LibraryPane(const LibraryPane&) = delete;
  LibraryPane& operator=(const LibraryPane&) = delete;

  void Draw(TestFrame& f) {
    const uint32_t result =
        NIVRAL_DWDrawYUV420(m_pane, f.y.data(), static_cast<uint32_t>(f.strideY), f.u.data(), f.v.data(),
                            static_cast<uint32_t>(f.strideUV), 0, 0);
    if (result != 0) {
      std::fprintf(stderr, "a frame was dropped\n");
      std::exit(1);
    }
  }

 private:
  TestWindow m_window;
  void* m_pane = nullptr;
};

void Measure(int width, int height, int frames) {
  TestFrame frame = GradientFrame(width, height);
  BareSdl bare(width, height, 20, 40);
  LibraryPane pane(width, height, 1000, 40);
  const std::vector<double> ms =
      MedianMs({{"bare", [&] { bare.Draw(frame); }}, {"library", [&] { pane.Draw(frame); }}}, frames);
  std::printf("%dx%d: bare SDL2 %.3f ms, library %.3f ms, difference %+.3f ms (%+.2f %%)\n", width, height,
              ms[0], ms[1], ms[1] - ms[0], (ms[1] / ms[0] - 1) * 100);
  std::fflush(stdout);
}

}  // namespace

int main() {
  const char* wanted = std::getenv("NIVRAL_BENCH_FRAMES");
  const int frames = wanted ? std::atoi(wanted) : 200;
  NIVRAL_InitializeEx(1);
  for (int repeat = 0; repeat < 3; ++repeat) {
    Measure(1280, 720, frames);
    Measure(1920, 1080, frames);
  }
  return NIVRAL_UnInitialize() == 0 ? 0 : 1;
}
