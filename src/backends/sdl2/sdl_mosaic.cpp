// SPDX-License-Identifier: MIT
#include "backends/sdl2/sdl_mosaic.h"

#include <array>

namespace libnivral {
namespace {

constexpr uint32_t kFormat = SDL_PIXELFORMAT_ABGR8888;
constexpr int kBytesPerPixel = 4;

/// Renderers know corners to a 256th of a pixel, so blocks may be half as many pixels wide.
constexpr int32_t kMaxDrawnBlock = 128;

/// The first blocks of an area that begins off the display take their colours from its edge, not from their
/// own first pixels.
bool IsRegular(const MosaicGrid& grid) {
  return grid.target.left >= 0 && grid.target.top >= 0 && grid.block <= kMaxDrawnBlock;
}

bool EnsureTexture(SdlTexture& texture, SDL_Renderer* renderer, SDL_TextureAccess access,
                   const MosaicGrid& grid) {
  int width = 0;
  int height = 0;
  if (texture && SDL_QueryTexture(texture.get(), nullptr, nullptr, &width, &height) == 0 &&
      width == grid.columns && height == grid.rows) {
    return true;
  }
  texture.reset(SDL_CreateTexture(renderer, kFormat, access, grid.columns, grid.rows));
  if (!texture) return false;
  SDL_SetTextureScaleMode(texture.get(), SDL_ScaleModeNearest);
  // What was drawn or read back carries whatever alpha the target has.
  SDL_SetTextureBlendMode(texture.get(), SDL_BLENDMODE_NONE);
  return true;
}

/// One direction of the part of the video that is drawn: from and to, in blocks and as fractions of the
/// display.
struct VideoAxis {
  float from;
  float to;
  float first;
  float last;
};

/// The corners are at whole blocks, where rendering is exact, unless that is off the display.
VideoAxis LayOutVideo(const BlockAxis& axis, int32_t display) {
  const auto end = static_cast<float>(display);
  VideoAxis video{0, axis.count, axis.ToPixels(0), axis.ToPixels(axis.count)};
  if (video.first < 0) video.from = axis.ToBlocks(video.first = 0);
  if (video.last > end) video.to = axis.ToBlocks(video.last = end);
  video.first /= end;
  video.last /= end;
  return video;
}

bool DrawVideo(SDL_Renderer* renderer, SDL_Texture* video, const MosaicGrid& grid, const SDL_Point& display) {
  const VideoAxis x = LayOutVideo(grid.AxisX(), display.x);
  const VideoAxis y = LayOutVideo(grid.AxisY(), display.y);
  constexpr SDL_Color kWhite{255, 255, 255, SDL_ALPHA_OPAQUE};
  const SDL_Vertex a{{x.from, y.from}, kWhite, {x.first, y.first}};
  const SDL_Vertex b{{x.to, y.from}, kWhite, {x.last, y.first}};
  const SDL_Vertex c{{x.to, y.to}, kWhite, {x.last, y.last}};
  const SDL_Vertex d{{x.from, y.to}, kWhite, {x.first, y.last}};
  const std::array corners{a, b, c, a, c, d};
  return SDL_RenderGeometry(renderer, video, corners.data(), static_cast<int>(corners.size()), nullptr, 0) ==
         0;
}

/// Draws into a texture while it lives.
class TargetScope {
 public:
  TargetScope(SDL_Renderer* renderer, SDL_Texture* target)
      : m_renderer(renderer), m_set(SDL_SetRenderTarget(renderer, target) == 0) {}
  ~TargetScope() {
    // SDL leaves a target that it fails to leave, but keeps its size.
    if (SDL_SetRenderTarget(m_renderer, nullptr) != 0) SDL_RenderSetLogicalSize(m_renderer, 0, 0);
  }
  TargetScope(const TargetScope&) = delete;
  TargetScope& operator=(const TargetScope&) = delete;

  explicit operator bool() const { return m_set; }

 private:
  SDL_Renderer* m_renderer;
  bool m_set;
};

}  // namespace

void SdlMosaic::Prepare(SDL_Renderer* renderer, SDL_Texture* video, SdlOverlayBatch& overlays,
                        const MosaicGrid& grid, const SDL_Point& display) {
  m_prepared = false;
  if (grid.columns == 0 || !IsRegular(grid) || IsSoftware(renderer) || !SDL_RenderTargetSupported(renderer) ||
      !EnsureTexture(m_drawn, renderer, SDL_TEXTUREACCESS_TARGET, grid)) {
    return;
  }
  const TargetScope target(renderer, m_drawn.get());
  if (!target || !DrawVideo(renderer, video, grid, display)) return;
  overlays.DrawCorners(renderer, grid);
  m_prepared = true;
}

bool SdlMosaic::Draw(SDL_Renderer* renderer, const MosaicGrid& grid) {
  if (grid.columns == 0) return true;
  const SDL_Rect target = ToSdl(grid.target);
  const auto cover = [&](SDL_Texture* blocks) {
    return SDL_RenderCopy(renderer, blocks, nullptr, &target) == 0;
  };
  if (m_prepared && cover(m_drawn.get())) return true;
  if (ReadBack(renderer, grid) && cover(m_uploaded.get())) return true;
  return SDL_SetRenderDrawColor(renderer, 0, 0, 0, SDL_ALPHA_OPAQUE) == 0 &&
         SDL_RenderFillRect(renderer, &target) == 0;
}

bool SdlMosaic::ReadBack(SDL_Renderer* renderer, const MosaicGrid& grid) {
  const SDL_Rect area = ToSdl(grid.source);
  if (!m_source.resize(static_cast<size_t>(area.w) * static_cast<size_t>(area.h)) ||
      !m_blocks.resize(static_cast<size_t>(grid.columns) * static_cast<size_t>(grid.rows)) ||
      !EnsureTexture(m_uploaded, renderer, SDL_TEXTUREACCESS_STREAMING, grid) ||
      SDL_RenderReadPixels(renderer, &area, kFormat, m_source.data(), area.w * kBytesPerPixel) != 0) {
    return false;
  }
  uint32_t* block = m_blocks.data();
  for (int32_t row = 0; row < grid.rows; ++row) {
    const uint32_t* line = &m_source[static_cast<size_t>(grid.SourceY(row)) * static_cast<size_t>(area.w)];
    for (int32_t column = 0; column < grid.columns; ++column)
      *block++ = line[grid.SourceX(column)];
  }
  return SDL_UpdateTexture(m_uploaded.get(), nullptr, m_blocks.data(), grid.columns * kBytesPerPixel) == 0;
}

void SdlMosaic::Clear() {
  m_drawn.reset();
  m_uploaded.reset();
  m_prepared = false;
}

void SdlMosaic::Forget() {
  static_cast<void>(m_drawn.release());
  static_cast<void>(m_uploaded.release());
  m_prepared = false;
}

}  // namespace libnivral
