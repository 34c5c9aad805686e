// SPDX-License-Identifier: MIT
#include "backends/sdl2/sdl_overlay_batch.h"

#include <array>

namespace libnivral {

void SdlOverlayBatch::Clear() {
  m_corners.clear();
  m_runs.clear();
}

void SdlOverlayBatch::Add(const SdlSprite& sprite, const PixelRect& target, const SDL_Color& colour) {
  if (m_runs.empty() || m_runs.back().texture != sprite.texture) {
    if (!m_runs.push_back({sprite.texture, m_corners.size()})) return;
  }
  const auto left = static_cast<float>(target.left), right = static_cast<float>(target.right);
  const auto top = static_cast<float>(target.top), bottom = static_cast<float>(target.bottom);
  const SDL_Vertex a{{left, top}, colour, {sprite.left, sprite.top}};
  const SDL_Vertex b{{right, top}, colour, {sprite.right, sprite.top}};
  const SDL_Vertex c{{right, bottom}, colour, {sprite.right, sprite.bottom}};
  const SDL_Vertex d{{left, bottom}, colour, {sprite.left, sprite.bottom}};
  const std::array corners{a, b, c, a, c, d};
  if (m_corners.append(corners.data(), corners.size())) m_runs.back().end = m_corners.size();
}

/// Of what an SDL renderer draws, this is what it draws everything else with, so there is no other way when
/// it fails.
void SdlOverlayBatch::Draw(SDL_Renderer* renderer) const {
  size_t from = 0;
  for (const Run& run : m_runs) {
    const int count = static_cast<int>(run.end - from);
    if (count > 0) SDL_RenderGeometry(renderer, run.texture, m_corners.data() + from, count, nullptr, 0);
    from = run.end;
  }
}

}  // namespace libnivral
