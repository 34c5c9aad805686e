// SPDX-License-Identifier: MIT
#include "backends/sdl2/sdl_library.h"

#include <SDL.h>
#include <SDL_ttf.h>

#include <atomic>

#include "backends/sdl2/sdl_events.h"

namespace libnivral {
namespace {
bool g_running = false;
std::atomic<uint32_t> g_run{0};
}  // namespace

void StartSdl() {
  // SDL counts its starts in a byte and empties the event queue whenever a filter is set.
  if (g_running || SDL_Init(SDL_INIT_TIMER | SDL_INIT_VIDEO) != 0) return;
  g_running = true;
  SDL_SetHint("SDL_RENDER_SCALE_QUALITY", "1");
  SDL_SetHint("SDL_VIDEO_X11_XVIDMODE", "1");
  // With a driver chosen by SDL_RENDER_DRIVER SDL would not batch, and resize devices under its event lock.
  SDL_SetHintWithPriority(SDL_HINT_RENDER_BATCHING, "1", SDL_HINT_DEFAULT);
  SDL_SetEventFilter(&FilterEvent, nullptr);
  TTF_Init();
}

void StopSdl() {
  g_running = false;
  ++g_run;
  TTF_Quit();
  SDL_Quit();
}

uint32_t SdlRun() {
  return g_run;
}

}  // namespace libnivral
