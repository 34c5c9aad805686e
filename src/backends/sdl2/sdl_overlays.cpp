// SPDX-License-Identifier: MIT
#include "backends/sdl2/sdl_overlays.h"

#include <algorithm>

#include "backends/sdl2/sdl_error.h"
#include "display/overlay_layout.h"
#include "display/overlay_list.h"
#include "display/text_layout.h"

namespace libnivral {
namespace {

ErrorReporter g_fontErrors([](const char* operation,
                              long) { WriteSdlError(2, "DrawOSDText::SetPlayWnd", operation); },
                           kErrorIntervalMs);

constexpr SDL_Color kWhite{255, 255, 255, SDL_ALPHA_OPAQUE};

SDL_Color ToSdl(const OverlayColour& colour) {
  return {colour.r, colour.g, colour.b, SDL_ALPHA_OPAQUE};
}

}  // namespace

void SdlOverlays::BeginFrame(SDL_Renderer* renderer, int32_t displayWidth) {
  m_batch.Clear();
  m_text.BeginFrame(renderer, displayWidth);
}

bool SdlOverlays::AddTexts(const TextItems& items, const DisplayMap& map) {
  bool added = false;
  for (const TextItem& item : items)
    added |= AddOSDText(item, map);
  return added;
}

bool SdlOverlays::AddOSDText(const TextItem& item, const DisplayMap& map) {
  const auto place = PlaceOsdText(item, {DisplayMap::Unscaled(map.displayWidth, map.displayHeight)});
  if (!place) return false;
  if (!m_osdFont.SetSize(OsdFontSize(map.displayHeight))) {
    g_fontErrors.Failed("SDLDisplayer::DrawOSDText");
    return false;
  }
  return AddPicture(m_text.Find(m_osdFont, {item.text, *place, FromColourRef(item.colour)}));
}

void SdlOverlays::AddRecord(RecordView record, const DisplayMap& map) {
  if (!m_text.InFrame()) return;
  const bool withLabels = map.displayHeight > 0 && m_labelFont.SetSize(kSdlLabelPoints);
  LayOutRecord(m_list, record, map, SdlStyle(withLabels));
  FindLabels(map);
  AddShapes(map);
  AddLabels();
}

bool SdlOverlays::AddPicture(const std::optional<SdlPicture>& picture) {
  if (picture) m_batch.Add(picture->sprite, ToSdl(picture->area), kWhite);
  return picture.has_value();
}

/// A label and what is filled for it are one picture where nothing is painted between them.
void SdlOverlays::FindLabels(const DisplayMap& map) {
  for (size_t i = 0; i < m_list.labels.size(); ++i) {
    const OverlayLabel& label = m_list.labels[i];
    m_labels[i] = {};
    if (label.x >= map.displayWidth || label.y >= map.displayHeight) continue;
    // Labels of records with edges out of any range may lie as far left as a coordinate can say.
    const int64_t wrap = int64_t{map.displayWidth} - label.x;
    if (wrap > INT32_MAX) continue;
    SdlLine line{label.text, {label.x, label.y, static_cast<int32_t>(wrap)}, kOverlayBlue};
    if (CanJoin(i, map)) {
      OverlayShape& fill = m_list.shapes.data()[label.shape];
      const auto& [left, top, right, bottom] = label.area;
      line.bar = {fill.colour, {left - label.x, top - label.y, right - label.x, bottom - label.y}};
      m_labels[i] = m_text.Find(m_labelFont, line);
      if (m_labels[i]) fill.corners = {};
      line.bar = {};
    }
    if (!m_labels[i]) m_labels[i] = m_text.Find(m_labelFont, line);
  }
}

bool SdlOverlays::CanJoin(size_t i, const DisplayMap& map) {
  const OverlayLabel& label = m_list.labels[i];
  const auto meets = [&](const PixelRect& area) { return !Intersect(area, label.area).Empty(); };
  // Without a white spot, areas are filled by a renderer that does it faster than it copies.
  if (!m_text.Atlas().White().texture || !meets({0, 0, map.displayWidth, map.displayHeight}) ||
      label.shape >= m_list.shapes.size()) {
    return false;
  }
  return std::none_of(m_list.shapes.begin() + label.shape + 1, m_list.shapes.end(),
                      [&](const OverlayShape& shape) { return MayTouch(shape, label.area); }) &&
         std::none_of(m_labels.begin(), m_labels.begin() + static_cast<ptrdiff_t>(i),
                      [&](const auto& earlier) { return earlier && meets(earlier->area); });
}

void SdlOverlays::AddShapes(const DisplayMap& map) {
  SdlAtlas& atlas = m_text.Atlas();
  for (const OverlayShape& shape : m_list.shapes) {
    if (shape.kind == OverlayShape::Kind::Disc && AddDisc(atlas, shape, map)) continue;
    m_pixels.clear();
    AppendPixels(m_pixels, shape, map.displayWidth, map.displayHeight);
    for (const PixelRect& rect : m_pixels)
      m_batch.Add(atlas.White(), ToSdl(rect), ToSdl(shape.colour));
  }
}

/// Whether it needs no rectangles.
bool SdlOverlays::AddDisc(SdlAtlas& atlas, const OverlayShape& disc, const DisplayMap& map) {
  const SdlSprite sprite = m_discs.Find(atlas, disc.size);
  if (!sprite.texture) return false;
  const WideRect& corners = disc.corners;
  if (corners.left < map.displayWidth && corners.top < map.displayHeight && corners.right >= 0 &&
      corners.bottom >= 0) {
    const auto x = static_cast<int32_t>(corners.left + 1), y = static_cast<int32_t>(corners.top + 1);
    m_batch.Add(sprite, {x, y, 2 * disc.size, 2 * disc.size}, ToSdl(disc.colour));
  }
  return true;
}

void SdlOverlays::AddLabels() {
  for (size_t i = 0; i < m_list.labels.size(); ++i)
    AddPicture(m_labels[i]);
}

bool SdlOverlays::Draw(SDL_Renderer* renderer, const MosaicGrid& mosaic) {
  m_batch.Draw(renderer);
  return m_mosaic.Draw(renderer, mosaic);
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
