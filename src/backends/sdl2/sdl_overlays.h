// SPDX-License-Identifier: MIT
#pragma once

#include <array>

#include "backends/sdl2/sdl_font.h"
#include "backends/sdl2/sdl_mosaic.h"
#include "backends/sdl2/sdl_text.h"
#include "display/overlay_list.h"
#include "display/records.h"

namespace libnivral {

/// Draws everything that lies over the video of one pane with its renderer. Not for several threads at once.
class SdlOverlays {
 public:
  using TextItems = std::array<TextItem, kTextItemCount>;

  /// The lines of client text. Whether at least one was drawn.
  bool DrawTexts(SDL_Renderer* renderer, const TextItems& items, const DisplayMap& map);
  void DrawRecord(SDL_Renderer* renderer, RecordView record, const DisplayMap& map);
  bool DrawMosaic(SDL_Renderer* renderer, const MosaicGrid& grid) { return m_mosaic.Draw(renderer, grid); }

  /// To be called after the last overlay of a frame.
  void EndFrame() { m_text.EndFrame(); }

  /// To be called before the renderer goes.
  void ReleaseTextures();

  /// When SDL was shut down and has taken them with it.
  void ForgetTextures();

 private:
  bool DrawOSDText(SDL_Renderer* renderer, const TextItem& item, const DisplayMap& map);
  void DrawShapes(SDL_Renderer* renderer, const DisplayMap& map);
  void DrawLabels(SDL_Renderer* renderer, const DisplayMap& map);
  void FillPixels(SDL_Renderer* renderer, const OverlayColour& colour);

  SdlFont m_osdFont;
  SdlFont m_labelFont;
  SdlText m_text;
  SdlMosaic m_mosaic;
  // Kept from frame to frame for their memory.
  OverlayList m_list;
  RectList m_pixels;
  NothrowList<SDL_Rect> m_batch;
};

}  // namespace libnivral
