// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "backends/sdl2/sdl_atlas.h"
#include "backends/sdl2/sdl_font.h"
#include "backends/sdl2/sdl_objects.h"
#include "backends/sdl2/sdl_overlay_batch.h"
#include "display/overlay_types.h"
#include "display/records.h"
#include "display/text_layout.h"

namespace libnivral {

/// Texts, each rendered once per font size, colour and wrap width, and kept as long as it is in use: in one
/// texture with the others, or in one of its own when that has no room. Belongs to one renderer at a time.
class SdlText {
 public:
  void BeginFrame(SDL_Renderer* renderer, int32_t displayWidth) {
    m_renderer = renderer;
    m_displayWidth = displayWidth;
    m_atlasReady = false;
  }
  bool InFrame() const { return m_renderer != nullptr; }

  /// Adds a text of the ANSI code page, unscaled, broken at the display's right edge. Whether it could be
  /// rendered.
  bool Add(SdlOverlayBatch& batch, SdlFont& font, const char* text, const OsdPlace& place,
           const OverlayColour& colour);

  /// Ready for pictures of this frame.
  SdlAtlas& Atlas();

  /// When the frame is drawn, or not to be drawn: texts that have not been in one for a while are released.
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
    SdlTexture texture;  ///< its own, if any
    SdlSprite sprite;
    SDL_Rect letters{};  ///< the part of the picture that is not transparent
    uint32_t lastFrame = 0;
    std::unique_ptr<Entry> next;

    /// Pixels that it takes in the common texture.
    int64_t SharedArea() const { return texture ? 0 : int64_t{letters.w} * letters.h; }
  };

  /// Null when there is no memory for another text, which is then left out.
  Entry* Find(SdlFont& font, const char* text, int32_t wrapWidth, const OverlayColour& colour);
  void Keep(Entry& entry, SDL_Surface& picture);
  void ClearEntries();

  SDL_Renderer* m_renderer = nullptr;  ///< while a frame is being made
  int32_t m_displayWidth = 0;
  SdlAtlas m_atlas;
  bool m_atlasReady = false;  ///< prepared for this frame: a second time would lose what the frame shows
  std::unique_ptr<Entry> m_entries;
  uint32_t m_frame = 0;
  int64_t m_abandoned = 0;  ///< pixels of the common texture that released texts have taken
  bool m_full = false;      ///< a text found no room there
};

}  // namespace libnivral
