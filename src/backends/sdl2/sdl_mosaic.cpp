// SPDX-License-Identifier: MIT
#include "backends/sdl2/sdl_mosaic.h"

namespace libnivral {
namespace {

constexpr int kBytesPerPixel = 4;

/// The matrices of SDL's shaders.
YuvMatrix MatrixOf(const SDL_Point& video) {
  switch (SDL_GetYUVConversionModeForResolution(video.x, video.y)) {
    case SDL_YUV_CONVERSION_JPEG:
      return {0, 1, 1.402f, -0.3441f, -0.7141f, 1.772f};
    case SDL_YUV_CONVERSION_BT709:
      return {16, 1.1644f, 1.7927f, -0.2132f, -0.5329f, 2.1124f};
    default:
      return {16, 1.1644f, 1.596f, -0.3918f, -0.813f, 2.0172f};
  }
}

bool EnsureTexture(SdlTexture& texture, SDL_Renderer* renderer, const MosaicGrid& grid) {
  int width = 0;
  int height = 0;
  if (texture && SDL_QueryTexture(texture.get(), nullptr, nullptr, &width, &height) == 0 &&
      width == grid.columns && height == grid.rows) {
    return true;
  }
  texture.reset(
      SDL_CreateTexture(renderer, kPictureFormat, SDL_TEXTUREACCESS_STREAMING, grid.columns, grid.rows));
  if (!texture) return false;
  SDL_SetTextureScaleMode(texture.get(), SDL_ScaleModeNearest);
  // What was read back carries whatever alpha the target has.
  SDL_SetTextureBlendMode(texture.get(), SDL_BLENDMODE_NONE);
  return true;
}

}  // namespace

void SdlMosaic::Begin(SDL_Renderer* renderer, SDL_Texture* texture, const ConstFrameView& video,
                      const MosaicGrid& grid, const SDL_Point& display) {
  m_grid = grid;
  m_taken = false;
  SDL_Point size{};
  SDL_ScaleMode scaling{};
  if (grid.columns == 0 || IsSoftware(renderer) ||
      SDL_QueryTexture(texture, nullptr, nullptr, &size.x, &size.y) != 0 ||
      SDL_GetTextureScaleMode(texture, &scaling) != 0) {
    return;
  }
  m_taken = m_blocks.TakeFrom({.planes = video,
                               .width = size.x,
                               .height = size.y,
                               .displayWidth = display.x,
                               .displayHeight = display.y,
                               .matrix = MatrixOf(size),
                               .smooth = scaling != SDL_ScaleModeNearest},
                              grid);
}

void SdlMosaic::Paint(const SdlSprite& sprite, const PixelRect& target, const SDL_Color& colour) {
  if (!m_taken) return;
  const uint32_t paint = 0xFF000000 | uint32_t{colour.r} << 16 | uint32_t{colour.g} << 8 | colour.b;
  m_blocks.Paint(target, paint, sprite.pixels, sprite.pitch);
}

bool SdlMosaic::Draw(SDL_Renderer* renderer) {
  if (m_grid.columns == 0) return true;
  const SDL_Rect target = ToSdl(m_grid.target);
  if ((m_taken || ReadBack(renderer)) && Upload(renderer) &&
      SDL_RenderCopy(renderer, m_texture.get(), nullptr, &target) == 0) {
    return true;
  }
  return SDL_SetRenderDrawColor(renderer, 0, 0, 0, SDL_ALPHA_OPAQUE) == 0 &&
         SDL_RenderFillRect(renderer, &target) == 0;
}

bool SdlMosaic::ReadBack(SDL_Renderer* renderer) {
  const SDL_Rect area = ToSdl(m_grid.source);
  return m_source.resize(static_cast<size_t>(area.w) * static_cast<size_t>(area.h)) &&
         SDL_RenderReadPixels(renderer, &area, kPictureFormat, m_source.data(), area.w * kBytesPerPixel) ==
             0 &&
         m_blocks.TakeFrom(m_source.data(), m_grid);
}

bool SdlMosaic::Upload(SDL_Renderer* renderer) {
  return EnsureTexture(m_texture, renderer, m_grid) &&
         SDL_UpdateTexture(m_texture.get(), nullptr, m_blocks.data(), m_grid.columns * kBytesPerPixel) == 0;
}

}  // namespace libnivral
