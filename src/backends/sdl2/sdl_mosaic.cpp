// SPDX-License-Identifier: MIT
#include "backends/sdl2/sdl_mosaic.h"

namespace libnivral {
namespace {

constexpr uint32_t kFormat = SDL_PIXELFORMAT_ABGR8888;
constexpr int kBytesPerPixel = 4;

}  // namespace

bool SdlMosaic::Draw(SDL_Renderer* renderer, const MosaicGrid& grid) {
  if (grid.columns == 0 || !EnsureTexture(renderer, grid.columns, grid.rows)) return false;
  const SDL_Rect area = ToSdl(grid.source);
  const SDL_Rect target = ToSdl(grid.target);
  const auto pitch = static_cast<size_t>(area.w);
  if (!m_source.resize(pitch * static_cast<size_t>(area.h)) ||
      !m_blocks.resize(static_cast<size_t>(grid.columns) * static_cast<size_t>(grid.rows))) {
    SDL_SetRenderDrawColor(renderer, 0, 0, 0, SDL_ALPHA_OPAQUE);
    return SDL_RenderFillRect(renderer, &target) == 0;
  }
  if (SDL_RenderReadPixels(renderer, &area, kFormat, m_source.data(), area.w * kBytesPerPixel) != 0)
    return false;
  uint32_t* block = m_blocks.data();
  for (int32_t row = 0; row < grid.rows; ++row) {
    const uint32_t* line = &m_source[static_cast<size_t>(grid.SourceY(row)) * pitch];
    for (int32_t column = 0; column < grid.columns; ++column)
      *block++ = line[grid.SourceX(column)];
  }
  return SDL_UpdateTexture(m_texture.get(), nullptr, m_blocks.data(), grid.columns * kBytesPerPixel) == 0 &&
         SDL_RenderCopy(renderer, m_texture.get(), nullptr, &target) == 0;
}

bool SdlMosaic::EnsureTexture(SDL_Renderer* renderer, int32_t columns, int32_t rows) {
  int width = 0;
  int height = 0;
  if (m_texture && SDL_QueryTexture(m_texture.get(), nullptr, nullptr, &width, &height) == 0 &&
      width == columns && height == rows) {
    return true;
  }
  m_texture.reset(SDL_CreateTexture(renderer, kFormat, SDL_TEXTUREACCESS_STREAMING, columns, rows));
  if (!m_texture) return false;
  SDL_SetTextureScaleMode(m_texture.get(), SDL_ScaleModeNearest);
  // What was read back carries whatever alpha the target has.
  SDL_SetTextureBlendMode(m_texture.get(), SDL_BLENDMODE_NONE);
  return true;
}

}  // namespace libnivral
