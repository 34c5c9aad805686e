// SPDX-License-Identifier: MIT
#pragma once

#include "backends/sdl2/sdl_objects.h"
#include "backends/sdl2/sdl_overlay_batch.h"
#include "display/shelf.h"

namespace libnivral {

/// One texture for many small pictures, and a white spot that areas of one colour are painted from. Belongs
/// to one renderer at a time.
class SdlAtlas {
 public:
  /// Makes the texture unless there is one of a size that suits the display. Whether it was made: all that
  /// was in it is lost then.
  bool Prepare(SDL_Renderer* renderer, int32_t displayWidth);

  /// An area of a picture. Without a texture when it does not fit into what is left.
  SdlSprite Add(const SDL_Surface& picture, const SDL_Rect& area);

  /// Whether an area fits into an empty one.
  bool Suits(const SDL_Rect& area) const { return area.w <= m_side && area.h <= m_side - kSpotSide; }

  const SdlSprite& White() const { return m_white; }

  /// Gives all places back.
  void Empty();

  /// Changes whenever what was added is lost.
  uint32_t Generation() const { return m_generation; }

  void Clear() { m_texture.reset(); }

  /// When SDL was shut down and has taken it along.
  void Forget() { static_cast<void>(m_texture.release()); }

 private:
  static constexpr int32_t kSpotSide = 2;

  void PaintSpot();

  SdlTexture m_texture;
  int32_t m_side = 0;
  Shelf m_shelf{0};
  SdlSprite m_white;
  uint32_t m_generation = 0;
};

}  // namespace libnivral
