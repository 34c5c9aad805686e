// SPDX-License-Identifier: MIT
#include <SDL.h>

#include "backends/sdl2/sdl_objects.h"
#include "roads/bench_pane.h"

namespace {

class BareSdl : public BenchPane {
 public:
  explicit BareSdl(int place)
      : m_window(place),
        m_sdlWindow(SDL_CreateWindowFrom(m_window.Handle())),
        m_renderer(SDL_CreateRenderer(m_sdlWindow.get(), -1, SDL_RENDERER_ACCELERATED)),
        m_texture(SDL_CreateTexture(m_renderer.get(), SDL_PIXELFORMAT_YV12, SDL_TEXTUREACCESS_STREAMING,
                                    kFrameWidth, kFrameHeight)) {
    if (!m_texture) Fail("SDL makes no texture");
  }

  void Draw(TestFrame& f) override {
    SDL_UpdateYUVTexture(m_texture.get(), nullptr, f.y.data(), f.strideY, f.u.data(), f.strideUV, f.v.data(),
                         f.strideUV);
    SDL_RenderClear(m_renderer.get());
    SDL_RenderCopy(m_renderer.get(), m_texture.get(), nullptr, nullptr);
    SDL_RenderPresent(m_renderer.get());
  }

 private:
  BenchWindow m_window;
  SdlWindow m_sdlWindow;
  SdlRenderer m_renderer;
  SdlTexture m_texture;
};

}  // namespace

PanePointer MakeBareSdl(int place) {
  return std::make_unique<BareSdl>(place);
}
