// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <span>

#include "backends/sdl2/sdl_font.h"
#include "backends/sdl2/sdl_mosaic.h"
#include "backends/sdl2/sdl_text.h"
#include "display/box_layout.h"

/// Draws everything that lies over the video of one pane with its renderer. Not for several threads at once.
class SdlOverlays {
 public:
  using TextItems = std::array<TextItem, kTextItemCount>;

  /// The lines of client text. Whether at least one was drawn.
  bool DrawTexts(SDL_Renderer* renderer, const TextItems& items, const DisplayMap& map);
  void DrawAlg(SDL_Renderer* renderer, const AlgRecord& record, const DisplayMap& map);
  void DrawDsm(SDL_Renderer* renderer, const DsmRecord& record, const DisplayMap& map);
  bool DrawMosaic(SDL_Renderer* renderer, const MosaicGrid& grid) { return m_mosaic.Draw(renderer, grid); }

  /// To be called after the last overlay of a frame.
  void EndFrame() { m_text.EndFrame(); }

  /// To be called before the renderer goes.
  void ReleaseTextures();

  /// When SDL was shut down and has taken them with it.
  void ForgetTextures();

 private:
  bool DrawOsdText(SDL_Renderer* renderer, const TextItem& item, const DisplayMap& map);
  void DrawLabels(SDL_Renderer* renderer, std::span<const OverlayLabel> labels, const DisplayMap& map);
  void Fill(SDL_Renderer* renderer, std::span<const PixelRect> rects, const OverlayColor& color);

  SdlFont m_osdFont;
  SdlFont m_labelFont;
  SdlText m_text;
  SdlMosaic m_mosaic;
  // Kept from frame to frame for their memory.
  AlgLayout m_alg;
  RectList m_dsm;
  NothrowList<SDL_Rect> m_batch;
};
