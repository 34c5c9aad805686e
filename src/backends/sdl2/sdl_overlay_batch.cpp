// SPDX-License-Identifier: MIT
#include "backends/sdl2/sdl_overlay_batch.h"

#include <array>

namespace libnivral {
namespace {

constexpr size_t kCornersEach = 6;

}  // namespace

void SdlOverlayBatch::Clear() {
  m_corners.clear();
  m_runs.clear();
}

void SdlOverlayBatch::Add(const SdlSprite& sprite, const SDL_Rect& target, const SDL_Color& colour) {
  if (m_runs.empty() || m_runs.back().texture != sprite.texture) {
    if (!m_runs.push_back({sprite.texture, m_corners.size()})) return;
  }
  const auto left = static_cast<float>(target.x), right = static_cast<float>(target.x + target.w);
  const auto top = static_cast<float>(target.y), bottom = static_cast<float>(target.y + target.h);
  const SDL_Vertex a{{left, top}, colour, {sprite.left, sprite.top}};
  const SDL_Vertex b{{right, top}, colour, {sprite.right, sprite.top}};
  const SDL_Vertex c{{right, bottom}, colour, {sprite.right, sprite.bottom}};
  const SDL_Vertex d{{left, bottom}, colour, {sprite.left, sprite.bottom}};
  const std::array<SDL_Vertex, kCornersEach> corners{a, b, c, a, c, d};
  if (m_corners.append(corners.data(), corners.size())) m_runs.back().end = m_corners.size();
}

void SdlOverlayBatch::Draw(SDL_Renderer* renderer) const {
  size_t from = 0;
  for (const Run& run : m_runs) {
    Draw(renderer, run.texture, m_corners.data() + from, run.end - from);
    from = run.end;
  }
}

void SdlOverlayBatch::DrawCorners(SDL_Renderer* renderer, const MosaicGrid& grid) {
  const BlockAxis x = grid.AxisX(), y = grid.AxisY();
  size_t from = 0;
  for (const Run& run : m_runs) {
    m_reduced.clear();
    for (; from < run.end; from += kCornersEach) {
      const SDL_Vertex* const corners = m_corners.data() + from;
      const SDL_FPoint first = corners[0].position, last = corners[2].position;
      if (!x.Meets(first.x, last.x) || !y.Meets(first.y, last.y)) continue;
      std::array<SDL_Vertex, kCornersEach> reduced;
      for (size_t i = 0; i < kCornersEach; ++i) {
        reduced[i] = corners[i];
        reduced[i].position = {x.ToBlocks(corners[i].position.x), y.ToBlocks(corners[i].position.y)};
      }
      m_reduced.append(reduced.data(), reduced.size());
    }
    Draw(renderer, run.texture, m_reduced.data(), m_reduced.size());
  }
}

/// Of what an SDL renderer draws, this is what it draws everything else with, so there is no other way when
/// it fails.
void SdlOverlayBatch::Draw(SDL_Renderer* renderer, SDL_Texture* texture, const SDL_Vertex* corners,
                           size_t count) {
  if (count > 0) SDL_RenderGeometry(renderer, texture, corners, static_cast<int>(count), nullptr, 0);
}

}  // namespace libnivral
