// SPDX-License-Identifier: MIT
#include "backends/sdl2/sdl_atlas.h"

#include <algorithm>
#include <array>
#include <bit>

namespace libnivral {
namespace {

constexpr int32_t kMinSide = 512;
constexpr int32_t kMaxSide = 2048;

/// A power of two: places in the texture are exact fractions then.
int32_t SideFor(int32_t displayWidth) {
  const int32_t side = std::clamp(displayWidth, kMinSide, kMaxSide);
  return static_cast<int32_t>(std::bit_ceil(static_cast<uint32_t>(side)));
}

}  // namespace

bool SdlAtlas::Prepare(SDL_Renderer* renderer, int32_t displayWidth) {
  const int32_t side = SideFor(displayWidth);
  if (m_texture && side == m_side) return false;
  m_side = side;
  m_white = {};
  m_texture.reset(SDL_CreateTexture(renderer, kPictureFormat, SDL_TEXTUREACCESS_STATIC, side, side));
  if (m_texture) {
    SDL_SetTextureBlendMode(m_texture.get(), SDL_BLENDMODE_BLEND);
    SDL_SetTextureScaleMode(m_texture.get(), SDL_ScaleModeNearest);
    // A software renderer would copy where it can fill.
    if (!IsSoftware(renderer)) PaintSpot();
  }
  Empty();
  return true;
}

void SdlAtlas::PaintSpot() {
  std::array<uint32_t, kSpotSide * kSpotSide> pixels;
  pixels.fill(UINT32_MAX);
  const SDL_Rect corner{0, 0, kSpotSide, kSpotSide};
  if (SDL_UpdateTexture(m_texture.get(), &corner, pixels.data(), kSpotSide * 4) != 0) return;
  const float middle = 1.0f / static_cast<float>(m_side);
  m_white = {m_texture.get(), middle, middle, middle, middle};
}

void SdlAtlas::Empty() {
  ++m_generation;
  m_shelf = Shelf(m_side);
  m_shelf.Place(kSpotSide, kSpotSide);
}

SdlSprite SdlAtlas::Add(const SDL_Surface& picture, const SDL_Rect& area) {
  if (!m_texture) return {};
  const auto place = m_shelf.Place(area.w, area.h);
  if (!place) return {};
  const SDL_Rect target{place->x, place->y, area.w, area.h};
  if (SDL_UpdateTexture(m_texture.get(), &target, PixelAt(picture, area.x, area.y), picture.pitch) != 0) {
    return {};
  }
  return SpriteOf(m_texture.get(), target, m_side, m_side);
}

}  // namespace libnivral
