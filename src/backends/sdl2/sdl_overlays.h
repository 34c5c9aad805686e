// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <optional>

#include "backends/sdl2/sdl_discs.h"
#include "backends/sdl2/sdl_font.h"
#include "backends/sdl2/sdl_mosaic.h"
#include "backends/sdl2/sdl_text.h"
#include "display/overlay_list.h"
#include "display/records.h"

namespace libnivral {

/// Everything that lies over the video of one pane: gathered first, then drawn. Not for several threads at
/// once.
class SdlOverlays {
 public:
  using TextItems = std::array<TextItem, kTextItemCount>;

  void BeginFrame(SDL_Renderer* renderer, int32_t displayWidth);

  /// The lines of client text. Whether there is at least one.
  bool AddTexts(const TextItems& items, const DisplayMap& map);
  /// Nothing outside a frame.
  void AddRecord(RecordView record, const DisplayMap& map);

  /// When all is gathered and nothing is drawn yet, for a picture with a mosaic, in pixels of the display.
  void PrepareMosaic(SDL_Renderer* renderer, SDL_Texture* video, const MosaicGrid& grid,
                     const SDL_Point& display) {
    m_mosaic.Prepare(renderer, video, m_batch, grid, display);
  }

  /// Over the video. False when what the mosaic is to hide stays in view.
  bool Draw(SDL_Renderer* renderer, const MosaicGrid& mosaic);

  /// To be called after the last overlay of a frame.
  void EndFrame() { m_text.EndFrame(); }

  /// To be called before the renderer goes.
  void ReleaseTextures();

  /// When SDL was shut down and has taken them with it.
  void ForgetTextures();

 private:
  bool AddOSDText(const TextItem& item, const DisplayMap& map);
  void AddShapes(const DisplayMap& map);
  bool AddDisc(SdlAtlas& atlas, const OverlayShape& disc, const DisplayMap& map);
  void FindLabels(const DisplayMap& map);
  bool CanJoin(size_t i, const DisplayMap& map);
  void AddLabels();
  bool AddPicture(const std::optional<SdlPicture>& picture);

  SdlFont m_osdFont;
  SdlFont m_labelFont;
  SdlText m_text;
  SdlDiscs m_discs;
  SdlMosaic m_mosaic;
  SdlOverlayBatch m_batch;
  // Kept from frame to frame for their memory.
  OverlayList m_list;
  std::array<std::optional<SdlPicture>, 2 * kMaxBoxes> m_labels;  ///< of those in the list
  RectList m_pixels;
};

}  // namespace libnivral
