// SPDX-License-Identifier: MIT
#include "backends/sdl2/sdl_text.h"

#include <windows.h>

#include <climits>
#include <cstring>
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

}  // namespace

bool SdlText::Draw(SDL_Renderer* renderer, SdlFont& font, const char* text, int32_t x, int32_t y,
                   int32_t wrapWidth, const OverlayColour& colour) {
  Entry* const entry = Find(renderer, font, text, wrapWidth, colour);
  // What could not be rendered is tried again once its entry has aged.
  if (!entry || !entry->texture) return false;
  entry->lastFrame = m_frame;
  const SDL_Rect target{x, y, entry->width, entry->height};
  return SDL_RenderCopy(renderer, entry->texture.get(), nullptr, &target) == 0;
}

SdlText::Entry* SdlText::Find(SDL_Renderer* renderer, SdlFont& font, const char* text, int32_t wrapWidth,
                              const OverlayColour& colour) {
  for (Entry* entry = m_entries.get(); entry; entry = entry->next.get()) {
    if (entry->size == font.Size() && entry->colour == colour && wrapWidth >= entry->minWrap &&
        wrapWidth <= entry->maxWrap && std::strcmp(entry->text, text) == 0) {
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
  entry->minWrap = free ? unwrapped : wrapWidth;
  entry->maxWrap = free ? INT_MAX : wrapWidth;
  entry->lastFrame = m_frame;
  const SdlSurface surface(
      font.Render(wide.text, {colour.r, colour.g, colour.b, SDL_ALPHA_OPAQUE}, wrapWidth));
  if (surface) {
    entry->width = surface->w;
    entry->height = surface->h;
    entry->texture.reset(SDL_CreateTextureFromSurface(renderer, surface.get()));
    SDL_SetTextureBlendMode(entry->texture.get(), SDL_BLENDMODE_BLEND);
  }
  entry->next = std::move(m_entries);
  m_entries = std::move(entry);
  return m_entries.get();
}

void SdlText::Clear() {
  while (m_entries)
    m_entries = std::move(m_entries->next);
}

void SdlText::Forget() {
  for (Entry* entry = m_entries.get(); entry; entry = entry->next.get())
    static_cast<void>(entry->texture.release());
  Clear();
}

void SdlText::EndFrame() {
  ++m_frame;
  for (std::unique_ptr<Entry>* link = &m_entries; *link;) {
    if (m_frame - (*link)->lastFrame > kFramesKept) {
      *link = std::move((*link)->next);
    } else {
      link = &(*link)->next;
    }
  }
}

}  // namespace libnivral
