// SPDX-License-Identifier: MIT
#include "backends/sdl2/sdl_overlays.h"

#include "backends/sdl2/sdl_error.h"
#include "display/overlay_layout.h"
#include "display/overlay_list.h"
#include "display/text_layout.h"

namespace libnivral {
namespace {

ErrorReporter g_fontErrors([](const char* operation,
                              long) { WriteSdlError(2, "DrawOSDText::SetPlayWnd", operation); },
                           kErrorIntervalMs);

}  // namespace

bool SdlOverlays::DrawTexts(SDL_Renderer* renderer, const TextItems& items, const DisplayMap& map) {
  bool drawn = false;
  for (const TextItem& item : items)
    drawn |= DrawOSDText(renderer, item, map);
  return drawn;
}

bool SdlOverlays::DrawOSDText(SDL_Renderer* renderer, const TextItem& item, const DisplayMap& map) {
  const auto place = PlaceOsdText(item, {DisplayMap::Unscaled(map.displayWidth, map.displayHeight)});
  if (!place) return false;
  if (!m_osdFont.SetSize(OsdFontSize(map.displayHeight))) {
    g_fontErrors.Failed("SDLDisplayer::DrawOSDText");
    return false;
  }
  return m_text.Draw(renderer, m_osdFont, item.text, place->x, place->y, place->wrapWidth,
                     FromColourRef(item.colour));
}

void SdlOverlays::DrawRecord(SDL_Renderer* renderer, RecordView record, const DisplayMap& map) {
  const bool withLabels = map.displayHeight > 0 && m_labelFont.SetSize(kSdlLabelPoints);
  LayOutRecord(m_list, record, map, SdlStyle(withLabels));
  DrawShapes(renderer, map);
  DrawLabels(renderer, map);
}

void SdlOverlays::DrawShapes(SDL_Renderer* renderer, const DisplayMap& map) {
  OverlayColour colour;
  m_pixels.clear();
  for (const OverlayShape& shape : m_list.shapes) {
    if (shape.colour != colour) FillPixels(renderer, colour);
    colour = shape.colour;
    AppendPixels(m_pixels, shape, map.displayWidth, map.displayHeight);
  }
  FillPixels(renderer, colour);
}

void SdlOverlays::DrawLabels(SDL_Renderer* renderer, const DisplayMap& map) {
  for (const OverlayLabel& label : m_list.labels) {
    if (label.x >= map.displayWidth || label.y >= map.displayHeight) continue;
    // Labels of records with edges out of any range may lie as far left as a coordinate can say.
    const int64_t wrap = int64_t{map.displayWidth} - label.x;
    if (wrap > INT32_MAX) continue;
    m_text.Draw(renderer, m_labelFont, label.text, label.x, label.y, static_cast<int32_t>(wrap),
                kOverlayBlue);
  }
}

/// Those that wait, in one call.
void SdlOverlays::FillPixels(SDL_Renderer* renderer, const OverlayColour& colour) {
  if (m_pixels.empty()) return;
  m_batch.clear();
  for (const PixelRect& r : m_pixels)
    m_batch.push_back(ToSdl(r));
  m_pixels.clear();
  SDL_SetRenderDrawColor(renderer, colour.r, colour.g, colour.b, SDL_ALPHA_OPAQUE);
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

}  // namespace libnivral
