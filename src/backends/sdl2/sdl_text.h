// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>

#include "backends/sdl2/sdl_atlas.h"
#include "backends/sdl2/sdl_font.h"
#include "backends/sdl2/sdl_objects.h"
#include "backends/sdl2/sdl_overlay_batch.h"
#include "display/overlay_types.h"
#include "display/records.h"
#include "display/text_layout.h"

namespace libnivral {

/// What is filled beneath a text. Without an area nothing is.
struct SdlBar {
  OverlayColour colour;
  PixelRect area;  ///< seen from the text's place

  bool operator==(const SdlBar&) const = default;
};

struct SdlLine {
  const char* text;
  OsdPlace place;
  OverlayColour colour;
  SdlBar bar{};
};

/// A sprite and its place on the display.
struct SdlPicture {
  SdlSprite sprite;
  PixelRect area;
};

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

  /// A text of the ANSI code page, unscaled, broken at the display's right edge. Nothing when it cannot be
  /// rendered.
  std::optional<SdlPicture> Find(SdlFont& font, const SdlLine& line);

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
    SdlBar bar;
    int32_t minWrap = 0;  ///< range of wrap widths that give this picture
    int32_t maxWrap = 0;
    SdlTexture texture;  ///< its own, if any
    SdlSprite sprite;
    SDL_Point origin{};  ///< of the picture, seen from the text's place
    SDL_Rect letters{};  ///< the part of the picture that is not transparent
    uint32_t lastFrame = 0;
    std::unique_ptr<Entry> next;

    /// Pixels that it takes in the common texture.
    int64_t SharedArea() const { return texture ? 0 : int64_t{letters.w} * letters.h; }
  };

  /// Null when there is no memory for another text, which is then left out.
  Entry* FindEntry(SdlFont& font, const SdlLine& line);
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
