// SPDX-License-Identifier: MIT
#pragma once

#include "backends/sdl2/sdl_objects.h"
#include "display/mosaic_layout.h"
#include "display/overlay_types.h"
#include "util/nothrow_list.h"

namespace libnivral {

/// A rectangle of a texture, or one point of it for an area of one colour.
struct SdlSprite {
  SDL_Texture* texture = nullptr;  ///< none: the colour as it is
  float left = 0;                  ///< in the texture, 0 to 1
  float top = 0;
  float right = 0;
  float bottom = 0;
};

/// An area of a texture of a size.
inline SdlSprite SpriteOf(SDL_Texture* texture, const SDL_Rect& area, int32_t width, int32_t height) {
  const auto u = [&](int32_t x) { return static_cast<float>(x) / static_cast<float>(width); };
  const auto v = [&](int32_t y) { return static_cast<float>(y) / static_cast<float>(height); };
  return {texture, u(area.x), v(area.y), u(area.x + area.w), v(area.y + area.h)};
}

/// What lies over one picture, in the order in which it is painted. A draw call costs more than what a label
/// covers, so all that comes from one texture is one call; nothing is drawn before.
class SdlOverlayBatch {
 public:
  void Clear();

  /// The texture must live until the batch is cleared. What there is no memory for is left out.
  void Add(const SdlSprite& sprite, const SDL_Rect& target, const SDL_Color& colour);

  void Draw(SDL_Renderer* renderer) const;

  /// Draws what shows at the corners of a mosaic's blocks, a pixel a block.
  void DrawCorners(SDL_Renderer* renderer, const MosaicGrid& grid);

 private:
  /// Neighbours in the list of corners that are of one texture.
  struct Run {
    SDL_Texture* texture;
    size_t end;
  };
  using Corners = NothrowList<SDL_Vertex>;

  static void Draw(SDL_Renderer* renderer, SDL_Texture* texture, const SDL_Vertex* corners, size_t count);

  Corners m_corners;  ///< two triangles each
  Corners m_reduced;
  NothrowList<Run> m_runs;
};

}  // namespace libnivral
