// SPDX-License-Identifier: MIT
#include "backends/sdl2/sdl_overlays.h"

#include "backends/sdl2/sdl_error.h"
#include "display/osd_layout.h"

namespace {

ErrorReporter g_fontErrors([](const char* operation,
                              long) { WriteSdlError(2, "DrawOSDText::SetPlayWnd", operation); },
                           kErrorIntervalMs);

}  // namespace

bool SdlOverlays::DrawTexts(SDL_Renderer* renderer, const TextItems& items, const DisplayMap& map) {
  bool drawn = false;
  for (const TextItem& item : items)
    drawn |= DrawOsdText(renderer, item, map);
  return drawn;
}

bool SdlOverlays::DrawOsdText(SDL_Renderer* renderer, const TextItem& item, const DisplayMap& map) {
  const auto place = PlaceOsdText(item, map.displayWidth, map.displayHeight);
  if (!place) return false;
  if (!m_osdFont.SetSize(OsdFontSize(map.displayHeight))) {
    g_fontErrors.Failed("SDLDisplayer::DrawOSDText");
    return false;
  }
  return m_text.Draw(renderer, m_osdFont, item.text, place->x, place->y, place->wrapWidth,
                     FromColorRef(item.color));
}

void SdlOverlays::DrawAlg(SDL_Renderer* renderer, const AlgRecord& record, const DisplayMap& map) {
  const bool withLabels = map.displayHeight > 0 && m_labelFont.SetSize(kLabelFontSize);
  LayoutAlgRecord(m_alg, record, map, withLabels);
  size_t from = 0;
  for (const ColorRun& run : m_alg.runs) {
    Fill(renderer, std::span(m_alg.rects).subspan(from, run.end - from), run.color);
    from = run.end;
  }
  DrawLabels(renderer, m_alg.classLabels, map);
  DrawLabels(renderer, m_alg.distanceLabels, map);
}

void SdlOverlays::DrawDsm(SDL_Renderer* renderer, const DsmRecord& record, const DisplayMap& map) {
  m_dsm.clear();
  LayoutDsmRecord(m_dsm, record, map);
  Fill(renderer, m_dsm, kOverlayGreen);
}

void SdlOverlays::DrawLabels(SDL_Renderer* renderer, std::span<const OverlayLabel> labels,
                             const DisplayMap& map) {
  for (const OverlayLabel& label : labels) {
    if (label.x >= map.displayWidth || label.y >= map.displayHeight) continue;
    // Labels of records with edges out of any range may lie as far left as a coordinate can say.
    const int64_t wrap = int64_t{map.displayWidth} - label.x;
    if (wrap > INT32_MAX) continue;
    m_text.Draw(renderer, m_labelFont, label.text, label.x, label.y, static_cast<int32_t>(wrap),
                kOverlayBlue);
  }
}

void SdlOverlays::Fill(SDL_Renderer* renderer, std::span<const PixelRect> rects, const OverlayColor& color) {
  if (rects.empty()) return;
  m_batch.clear();
  for (const PixelRect& r : rects)
    m_batch.push_back(ToSdl(r));
  SDL_SetRenderDrawColor(renderer, color.r, color.g, color.b, SDL_ALPHA_OPAQUE);
  SDL_RenderFillRects(renderer, m_batch.data(), static_cast<int>(m_batch.size()));
}

void SdlOverlays::ForgetTextures() {
  m_text.Forget();
  m_mosaic.Forget();
}

void SdlOverlays::ReleaseTextures() {
  m_text.Clear();
  m_mosaic.Clear();
}
