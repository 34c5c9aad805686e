// SPDX-License-Identifier: MIT
#pragma once

#include "backends/sdl2/sdl_objects.h"
#include "util/nothrow_list.h"

namespace libnivral {

/// A rectangle of a texture, or one point of it for an area of one colour.
struct SdlSprite {
  SDL_Texture* texture = nullptr;  ///< none: the colour as it is
  float left = 0;                  ///< in the texture, 0 to 1
  float top = 0;
  float right = 0;
  float bottom = 0;
  const uint32_t* pixels = nullptr;  ///< of what it shows; none: the colour as it is
  int32_t pitch = 0;                 ///< of those, in bytes
};

/// An area of a texture of a size, which shows a picture that lives as long.
inline SdlSprite SpriteOf(SDL_Texture* texture, const SDL_Rect& area, int32_t width, int32_t height,
                          const uint32_t* pixels, int32_t pitch) {
  const auto u = [&](int32_t x) { return static_cast<float>(x) / static_cast<float>(width); };
  const auto v = [&](int32_t y) { return static_cast<float>(y) / static_cast<float>(height); };
  return {texture, u(area.x), v(area.y), u(area.x + area.w), v(area.y + area.h), pixels, pitch};
}

/// The part of a sprite that is shown in a part of its target.
inline SdlSprite PartOf(const SdlSprite& sprite, const PixelRect& target, const PixelRect& part) {
  const auto share = [](int32_t at, int32_t from, int64_t size) {
    return static_cast<float>(at - from) / static_cast<float>(size);
  };
  const float width = sprite.right - sprite.left, height = sprite.bottom - sprite.top;
  SdlSprite result = sprite;
  result.left += width * share(part.left, target.left, target.Width());
  result.right += width * share(part.right, target.right, target.Width());
  result.top += height * share(part.top, target.top, target.Height());
  result.bottom += height * share(part.bottom, target.bottom, target.Height());
  return result;
}

/// What lies over one picture, in the order in which it is painted. A draw call costs more than what a label
/// covers, so all that comes from one texture is one call; nothing is drawn before.
class SdlOverlayBatch {
 public:
  void Clear();

  /// The texture must live until the batch is cleared. What there is no memory for is left out.
  void Add(const SdlSprite& sprite, const PixelRect& target, const SDL_Color& colour);

  void Draw(SDL_Renderer* renderer) const;

 private:
  /// Neighbours in the list of corners that are of one texture.
  struct Run {
    SDL_Texture* texture;
    size_t end;
  };

  NothrowList<SDL_Vertex> m_corners;  ///< two triangles each
  NothrowList<Run> m_runs;
};

}  // namespace libnivral
