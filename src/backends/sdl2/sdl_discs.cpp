// SPDX-License-Identifier: MIT
#include "backends/sdl2/sdl_discs.h"

namespace libnivral {

SdlSprite SdlDiscs::Find(SdlAtlas& atlas, int32_t radius) {
  if (radius < 1 || radius > kMaxRadius || !atlas.White().texture) return {};
  if (m_generation != atlas.Generation()) {
    m_generation = atlas.Generation();
    for (Disc& disc : m_discs)
      disc.sprite = {};
  }
  auto& [picture, sprite] = m_discs[static_cast<size_t>(radius)];
  if (!picture) picture = Paint(radius);
  if (picture && !sprite.texture) sprite = atlas.Add(*picture, {0, 0, picture->w, picture->h});
  return sprite;
}

SdlSurface SdlDiscs::Paint(int32_t radius) {
  const int32_t side = 2 * radius;
  SdlSurface picture(SDL_CreateRGBSurfaceWithFormat(0, side, side, 32, kPictureFormat));
  if (!picture) return picture;
  const OverlayShape disc{.kind = OverlayShape::Kind::Disc,
                          .colour = {},
                          .corners = {-1, -1, side - 1, side - 1},
                          .size = radius};
  RectList parts;
  AppendPixels(parts, disc, side, side);
  for (const PixelRect& part : parts) {
    const SDL_Rect area = ToSdl(part);
    SDL_FillRect(picture.get(), &area, UINT32_MAX);
  }
  return picture;
}

}  // namespace libnivral
