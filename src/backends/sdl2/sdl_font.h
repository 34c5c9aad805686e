// SPDX-License-Identifier: MIT
#pragma once

#include <SDL_ttf.h>

#include <cstdint>

#include "backends/sdl2/sdl_objects.h"

namespace libnivral {

/// The font of on-screen text at one size. Fonts of different panes may be used at once; one font belongs to
/// one thread at a time.
class SdlFont {
 public:
  SdlFont() = default;
  ~SdlFont();
  SdlFont(const SdlFont&) = delete;
  SdlFont& operator=(const SdlFont&) = delete;

  /// Opens the font file at a size in points, unless that size is open or has failed before. Whether there is
  /// a font now; below 1 there is none.
  bool SetSize(int32_t size);
  int32_t Size() const { return m_size; }

  /// Renders UTF-16 text in an opaque colour, with lines broken at a width in pixels. Null when the text
  /// cannot be rendered.
  SdlSurface Render(const wchar_t* text, const SDL_Color& colour, int32_t wrapWidth);

  /// Width of the text in one line, in pixels.
  int32_t WidthOf(const wchar_t* text);

 private:
  void Close();

  TTF_Font* m_font = nullptr;
  int32_t m_size = 0;
  uint32_t m_run = 0;  ///< the run of SDL_ttf that the font belongs to
};

}  // namespace libnivral
