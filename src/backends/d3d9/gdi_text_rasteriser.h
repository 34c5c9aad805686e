// SPDX-License-Identifier: MIT
#pragma once

#include <d3d9.h>

#include "backends/d3d9/shelf.h"
#include "backends/d3d9/text_rasteriser.h"
#include "util/win_handles.h"

namespace libnivral {

/// Texts by GDI, for systems without D3DX: each is drawn once and copied into a texture, which it shares with
/// others until that is full. A texture lives as long as a text in it is kept.
class GdiTextRasteriser : public TextRasteriser {
 public:
  /// The device must outlive this. Height and face as for D3DXCreateFont; rows of a text below `maxHeight`
  /// are not made.
  GdiTextRasteriser(IDirect3DDevice9* device, int32_t height, const char* face, int32_t maxHeight);

  int32_t Width(const char* text) override;
  bool Make(const char* text, int32_t room, TextPieces& pieces) override;

 private:
  struct Canvas;

  bool Measure(const char* text, int32_t room, SIZE& size);
  bool Store(const Canvas& canvas, const PixelRect& part, TextPieces& pieces);
  bool FindPlace(int32_t width, int32_t height, ShelfPlace& place);

  IDirect3DDevice9* m_device;
  int32_t m_maxHeight;
  int32_t m_margin;  ///< at both sides, for letters that reach beyond their advance
  UniqueHandleOf<HFONT, &DeleteObject> m_font;  // goes after the device context that it is selected into
  UniqueHandleOf<HDC, &DeleteDC> m_dc;
  ComPtr<IDirect3DTexture9> m_page;
  Shelf m_shelf;
};

}  // namespace libnivral
