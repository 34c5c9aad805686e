// SPDX-License-Identifier: MIT
// Owners for SDL objects.
#pragma once

#include <SDL.h>

#include <memory>

#include "picture/pixel_rect.h"

namespace libnivral {

template <auto Destroy>
struct SdlDeleter {
  template <class Object>
  void operator()(Object* object) const {
    Destroy(object);
  }
};

using SdlWindow = std::unique_ptr<SDL_Window, SdlDeleter<&SDL_DestroyWindow>>;
using SdlRenderer = std::unique_ptr<SDL_Renderer, SdlDeleter<&SDL_DestroyRenderer>>;
using SdlTexture = std::unique_ptr<SDL_Texture, SdlDeleter<&SDL_DestroyTexture>>;
using SdlSurface = std::unique_ptr<SDL_Surface, SdlDeleter<&SDL_FreeSurface>>;

inline SDL_Rect ToSdl(const PixelRect& r) {
  return {r.left, r.top, r.right - r.left, r.bottom - r.top};
}

/// Whether a renderer draws into memory, pixel by pixel and in whole pixels.
inline bool IsSoftware(SDL_Renderer* renderer) {
  SDL_RendererInfo info{};
  return SDL_GetRendererInfo(renderer, &info) == 0 && (info.flags & SDL_RENDERER_SOFTWARE) != 0;
}

}  // namespace libnivral
