// SPDX-License-Identifier: MIT
#include "backends/sdl2/sdl_text.h"

#include <windows.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <iterator>
#include <new>
#include <utility>

namespace libnivral {
namespace {

/// Frames that an unused texture is kept for: labels come and go, and a value may come back soon.
constexpr uint32_t kFramesKept = 16;

/// One line needs at most as many units as the text has bytes.
struct WideText {
  wchar_t text[sizeof(TextItem::text)];

  explicit WideText(const char* narrow) {
    // With an explicit length, a character cut in half at the end cannot swallow the terminator.
    const int bytes = static_cast<int>(strnlen(narrow, sizeof(TextItem::text) - 1));
    const int units = bytes > 0 ? MultiByteToWideChar(CP_ACP, 0, narrow, bytes, text, bytes) : 0;
    text[units] = L'\0';
  }
};

/// Wrap widths that give the same picture as `wrap`: all, as long as one line is surely narrower. Labels that
/// follow a vehicle would otherwise be rendered anew wherever it goes.
int32_t WidthWithoutWrap(SdlFont& font, const wchar_t* text) {
  if (wcschr(text, L'\n')) return INT_MAX;
  return font.WidthOf(text) + font.Size();
}

/// What is not transparent, at least one pixel. A picture is much higher than its letters, and what is
/// blended costs by the pixel.
SDL_Rect FindLetters(const SDL_Surface& picture) {
  PixelRect found{picture.w, picture.h, 0, 0};
  for (int32_t y = 0; y < picture.h; ++y) {
    const uint32_t* const row = PixelAt(picture, 0, y);
    const auto isOpaque = [](uint32_t pixel) { return (pixel & 0xFF000000) != 0; };
    const uint32_t* const end = row + picture.w;
    const uint32_t* const first = std::find_if(row, end, isOpaque);
    if (first == end) continue;
    const auto last =
        std::find_if(std::make_reverse_iterator(end), std::make_reverse_iterator(row), isOpaque);
    found = {std::min(found.left, static_cast<int32_t>(first - row)), std::min(found.top, y),
             std::max(found.right, static_cast<int32_t>(last.base() - row)), y + 1};
  }
  return found.Empty() ? SDL_Rect{0, 0, 1, 1} : ToSdl(found);
}

/// As a renderer blends: a colour of the letters' opacity over an opaque one.
uint32_t Blend(uint32_t letter, uint32_t below) {
  const uint32_t opacity = letter >> 24;
  uint32_t blended = 0xFF000000;
  for (const int shift : {0, 8, 16}) {
    const uint32_t over = letter >> shift & 255, under = below >> shift & 255;
    blended |= (over * opacity + under * (255 - opacity) + 127) / 255 << shift;
  }
  return blended;
}

/// Letters with what is filled beneath them, in a picture that has room for both. Null without memory for it.
SdlSurface WriteOn(const SdlBar& bar, SDL_Surface& letters) {
  const int32_t left = std::min(bar.area.left, 0), top = std::min(bar.area.top, 0);
  SdlSurface picture(SDL_CreateRGBSurfaceWithFormat(0, std::max(bar.area.right, letters.w) - left,
                                                    std::max(bar.area.bottom, letters.h) - top, 32,
                                                    kPictureFormat));
  if (!picture) return nullptr;
  const uint32_t fill = SDL_MapRGBA(picture->format, bar.colour.r, bar.colour.g, bar.colour.b, 255);
  for (int32_t y = bar.area.top; y < bar.area.bottom; ++y)
    std::fill_n(PixelAt(*picture, bar.area.left - left, y - top), bar.area.Width(), fill);
  for (int32_t y = 0; y < letters.h; ++y) {
    const uint32_t* const from = PixelAt(letters, 0, y);
    uint32_t* const to = PixelAt(*picture, -left, y - top);
    for (int32_t x = 0; x < letters.w; ++x)
      to[x] = to[x] ? Blend(from[x], to[x]) : from[x];
  }
  return picture;
}

}  // namespace

SdlAtlas& SdlText::Atlas() {
  if (!std::exchange(m_atlasReady, true) && m_atlas.Prepare(m_renderer, m_displayWidth)) ClearEntries();
  return m_atlas;
}

std::optional<SdlPicture> SdlText::Find(SdlFont& font, const SdlLine& line) {
  Atlas();
  Entry* const entry = FindEntry(font, line);
  // What could not be rendered is tried again once its entry has aged.
  if (!entry || !entry->sprite.texture) return std::nullopt;
  entry->lastFrame = m_frame;
  const int32_t x = line.place.x + entry->origin.x + entry->letters.x;
  const int32_t y = line.place.y + entry->origin.y + entry->letters.y;
  return SdlPicture{entry->sprite, {x, y, x + entry->letters.w, y + entry->letters.h}};
}

SdlText::Entry* SdlText::FindEntry(SdlFont& font, const SdlLine& line) {
  const auto& [text, place, colour, bar] = line;
  const int32_t wrapWidth = place.wrapWidth;
  for (Entry* entry = m_entries.get(); entry; entry = entry->next.get()) {
    if (entry->size == font.Size() && entry->colour == colour && wrapWidth >= entry->minWrap &&
        wrapWidth <= entry->maxWrap && entry->bar == bar && std::strcmp(entry->text, text) == 0) {
      return entry;
    }
  }
  std::unique_ptr<Entry> entry(new (std::nothrow) Entry);
  if (!entry) return nullptr;
  const WideText wide(text);
  const int32_t unwrapped = WidthWithoutWrap(font, wide.text);
  const bool free = wrapWidth >= unwrapped;
  std::memcpy(entry->text, text, strnlen(text, sizeof(entry->text) - 1));
  entry->size = font.Size();
  entry->colour = colour;
  entry->bar = bar;
  entry->minWrap = free ? unwrapped : wrapWidth;
  entry->maxWrap = free ? INT_MAX : wrapWidth;
  entry->lastFrame = m_frame;
  SdlSurface surface = font.Render(wide.text, {colour.r, colour.g, colour.b, SDL_ALPHA_OPAQUE}, wrapWidth);
  if (surface && !bar.area.Empty()) {
    entry->origin = {std::min(bar.area.left, 0), std::min(bar.area.top, 0)};
    surface = WriteOn(bar, *surface);
  }
  if (surface) Keep(*entry, *surface);
  entry->next = std::move(m_entries);
  m_entries = std::move(entry);
  return m_entries.get();
}

void SdlText::Keep(Entry& entry, SDL_Surface& picture) {
  entry.letters = FindLetters(picture);
  entry.sprite = m_atlas.Add(picture, entry.letters);
  if (entry.sprite.texture) return;
  m_full = m_full || m_atlas.Suits(entry.letters);
  entry.texture.reset(SDL_CreateTextureFromSurface(m_renderer, &picture));
  if (!entry.texture) return;
  SDL_SetTextureBlendMode(entry.texture.get(), SDL_BLENDMODE_BLEND);
  entry.sprite = SpriteOf(entry.texture.get(), entry.letters, picture.w, picture.h);
}

void SdlText::Clear() {
  ClearEntries();
  m_atlas.Clear();
}

void SdlText::ClearEntries() {
  m_abandoned = 0;
  m_full = false;
  while (m_entries)
    m_entries = std::move(m_entries->next);
}

void SdlText::Forget() {
  for (Entry* entry = m_entries.get(); entry; entry = entry->next.get())
    static_cast<void>(entry->texture.release());
  ClearEntries();
  m_atlas.Forget();
}

void SdlText::EndFrame() {
  m_renderer = nullptr;
  ++m_frame;
  int64_t inUse = 0;
  for (std::unique_ptr<Entry>* link = &m_entries; *link;) {
    Entry& entry = **link;
    if (m_frame - entry.lastFrame > kFramesKept) {
      m_abandoned += entry.SharedArea();
      *link = std::move(entry.next);
    } else {
      inUse += entry.SharedArea();
      link = &entry.next;
    }
  }
  // All are rendered anew then, which is worth it once there is as much room again.
  if (!m_full || m_abandoned < inUse) return;
  ClearEntries();
  m_atlas.Empty();
}

}  // namespace libnivral
