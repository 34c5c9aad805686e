// SPDX-License-Identifier: MIT
#include "backends/sdl2/sdl_font.h"

#include "backends/sdl2/sdl_library.h"
#include "display/fonts.h"
#include "util/mutex_lock.h"

namespace libnivral {
namespace {

/// FreeType's library object, which all fonts share, is not made for several threads.
CMutexLock g_ttfLock;

const Uint16* Units(const wchar_t* text) {
  static_assert(sizeof(wchar_t) == sizeof(Uint16));
  return reinterpret_cast<const Uint16*>(text);
}

/// The font of the lookup, else the first that opens of those that the system may have instead.
TTF_Font* Open(int32_t size) {
  if (TTF_Font* const found = TTF_OpenFont(FontPath(), size)) return found;
  FontFile file;
  for (size_t i = 0; FallbackFontFile(file, FontPath(), i); ++i) {
    if (TTF_Font* const other = TTF_OpenFont(file, size)) return other;
  }
  const auto data = SystemFontFile();
  if (data.empty()) return nullptr;
  return TTF_OpenFontRW(SDL_RWFromConstMem(data.data(), static_cast<int>(data.size())), 1, size);
}

}  // namespace

SdlFont::~SdlFont() {
  Close();
}

void SdlFont::Close() {
  CAutoLock guard(&g_ttfLock);
  // Stopping SDL_ttf has taken fonts that were still open with it.
  if (m_font && m_run == SdlRun()) TTF_CloseFont(m_font);
  m_font = nullptr;
}

bool SdlFont::SetSize(int32_t size) {
  if (size < 1) return false;
  if (size != m_size || m_run != SdlRun()) {
    Close();
    m_size = size;
    m_run = SdlRun();
    CAutoLock guard(&g_ttfLock);
    m_font = Open(size);
  }
  return m_font != nullptr;
}

SdlSurface SdlFont::Render(const wchar_t* text, const SDL_Color& colour, int32_t wrapWidth) {
  CAutoLock guard(&g_ttfLock);
  SdlSurface picture(
      TTF_RenderUNICODE_Blended_Wrapped(m_font, Units(text), colour, static_cast<Uint32>(wrapWidth)));
  if (picture && picture->format->format != kPictureFormat)
    picture.reset(SDL_ConvertSurfaceFormat(picture.get(), kPictureFormat, 0));
  return picture;
}

int32_t SdlFont::WidthOf(const wchar_t* text) {
  CAutoLock guard(&g_ttfLock);
  int width = 0;
  TTF_SizeUNICODE(m_font, Units(text), &width, nullptr);
  return width;
}

}  // namespace libnivral
