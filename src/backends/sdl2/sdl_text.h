// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "backends/sdl2/sdl_font.h"
#include "backends/sdl2/sdl_objects.h"
#include "display/overlay_types.h"
#include "display/records.h"

namespace libnivral {

/// Draws text from textures that are rendered once per text, font size, colour and wrap width, and kept as
/// long as they are in use. Belongs to one renderer at a time.
class SdlText {
 public:
  /// Draws a text of the ANSI code page, unscaled, with its top-left corner at (x, y), broken at the
  /// display's right edge. Whether something was copied.
  bool Draw(SDL_Renderer* renderer, SdlFont& font, const char* text, int32_t x, int32_t y, int32_t wrapWidth,
            const OverlayColour& colour);

  /// Ends a frame: textures that have not been drawn for some frames are released.
  void EndFrame();

  /// To be called before the renderer goes.
  void Clear();

  /// Lets go of textures that their renderer has taken with it.
  void Forget();

 private:
  struct Entry {
    char text[sizeof(TextItem::text)]{};
    int32_t size = 0;
    OverlayColour colour;
    int32_t minWrap = 0;  ///< range of wrap widths that give this picture
    int32_t maxWrap = 0;
    SdlTexture texture;
    int32_t width = 0;
    int32_t height = 0;
    uint32_t lastFrame = 0;
    std::unique_ptr<Entry> next;
  };

  /// Null when there is no memory for another text, which is then left out.
  Entry* Find(SDL_Renderer* renderer, SdlFont& font, const char* text, int32_t wrapWidth,
              const OverlayColour& colour);

  std::unique_ptr<Entry> m_entries;
  uint32_t m_frame = 0;
};

}  // namespace libnivral
