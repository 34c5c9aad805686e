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

/// Of SDL_ttf's pictures, so of all others too.
constexpr uint32_t kPictureFormat = SDL_PIXELFORMAT_ARGB8888;

/// In a picture of that format.
inline uint32_t* PixelAt(const SDL_Surface& picture, int32_t x, int32_t y) {
  return reinterpret_cast<uint32_t*>(static_cast<uint8_t*>(picture.pixels) + ptrdiff_t{y} * picture.pitch) +
         x;
}

inline SDL_Rect ToSdl(const PixelRect& r) {
  return {r.left, r.top, r.right - r.left, r.bottom - r.top};
}

/// Whether a renderer draws into memory, pixel by pixel and in whole pixels.
inline bool IsSoftware(SDL_Renderer* renderer) {
  SDL_RendererInfo info{};
  return SDL_GetRendererInfo(renderer, &info) == 0 && (info.flags & SDL_RENDERER_SOFTWARE) != 0;
}

}  // namespace libnivral
