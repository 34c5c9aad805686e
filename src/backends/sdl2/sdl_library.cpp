// SPDX-License-Identifier: MIT
#include "backends/sdl2/sdl_library.h"

#include <SDL.h>
#include <SDL_ttf.h>

#include "backends/sdl2/sdl_events.h"

void StartSdl() {
  if (SDL_Init(SDL_INIT_TIMER | SDL_INIT_VIDEO) != 0) return;
  SDL_SetHint("SDL_RENDER_SCALE_QUALITY", "1");
  SDL_SetHint("SDL_VIDEO_X11_XVIDMODE", "1");
  SDL_SetEventFilter(&FilterEvent, nullptr);
  // SDL_ttf counts its starts; one TTF_Quit must be enough however often the library was started.
  if (!TTF_WasInit()) TTF_Init();
}

void StopSdl() {
  TTF_Quit();
  SDL_Quit();
}
