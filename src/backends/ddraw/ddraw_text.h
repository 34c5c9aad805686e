// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <array>

#include "display/overlay_list.h"
#include "display/records.h"
#include "util/win_handles.h"

namespace libnivral {

/// Writes the letters of burnt-in labels into their areas with GDI. Keeps its fonts until the size changes.
class GdiLabels {
 public:
  using Labels = NothrowList<OverlayLabel>;

  /// Whether there is something to be written at this scale.
  static bool Readable(const Labels& labels, const DisplayMap& map);
  void Draw(HDC dc, const Labels& labels, const DisplayMap& map);

 private:
  using Font = UniqueHandleOf<HFONT, &DeleteObject>;

  bool SetHeight(HDC dc, int32_t height);
  int32_t WidthOf(const char* text) const;

  Font m_font;
  Font m_narrowFont;  ///< for texts that are longer than their area
  std::array<INT, 128> m_widths{};
  int32_t m_height = 0;
};

/// Draws text items with GDI. Keeps its font until the size or the face changes.
class GdiText {
 public:
  /// Chooses the face and a height of a twentieth of the drawn area, as the other backends that draw text in
  /// video coordinates do. Not smoothed: strokes have exactly the item's colour and stay sharp on moving
  /// pictures.
  void SetFont(const char* face, int32_t areaHeight);

  /// Draws on lines from the item's place to the area's right edge, broken between words.
  void Draw(HDC dc, const TextItem& item, const DisplayMap& map) const;

 private:
  UniqueHandleOf<HFONT, &DeleteObject> m_font;
  char m_face[LF_FACESIZE]{};
  int32_t m_height = 0;
};

}  // namespace libnivral
