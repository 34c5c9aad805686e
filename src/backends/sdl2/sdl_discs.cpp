// SPDX-License-Identifier: MIT
#include "backends/sdl2/sdl_discs.h"

namespace libnivral {

SdlSprite SdlDiscs::Find(SdlAtlas& atlas, int32_t radius) {
  if (radius < 1 || radius > kMaxRadius || !atlas.White().texture) return {};
  if (m_generation != atlas.Generation()) {
    m_generation = atlas.Generation();
    m_sprites = {};
  }
  SdlSprite& sprite = m_sprites[static_cast<size_t>(radius)];
  if (!sprite.texture) sprite = Make(atlas, radius);
  return sprite;
}

SdlSprite SdlDiscs::Make(SdlAtlas& atlas, int32_t radius) {
  const int32_t side = 2 * radius;
  const SdlSurface picture(SDL_CreateRGBSurfaceWithFormat(0, side, side, 32, kPictureFormat));
  if (!picture) return {};
  m_parts.clear();
  const OverlayShape disc{.kind = OverlayShape::Kind::Disc,
                          .colour = {},
                          .corners = {-1, -1, side - 1, side - 1},
                          .size = radius};
  AppendPixels(m_parts, disc, side, side);
  for (const PixelRect& part : m_parts) {
    const SDL_Rect area = ToSdl(part);
    SDL_FillRect(picture.get(), &area, UINT32_MAX);
  }
  return atlas.Add(*picture, {0, 0, side, side});
}

}  // namespace libnivral
