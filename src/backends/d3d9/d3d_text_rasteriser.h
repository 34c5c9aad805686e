// SPDX-License-Identifier: MIT
// How texts get into textures: by D3DX, or by GDI for systems without it.
#pragma once

#include <d3dx9.h>

#include <cstdint>

#include "backends/d3d9/d3d_text_batch.h"
#include "display/shelf.h"
#include "util/win_handles.h"

namespace libnivral {

/// Room that no line of text fills.
constexpr int32_t kOneLine = 1 << 20;

constexpr UINT kTextFormat = DT_NOCLIP | DT_WORDBREAK;

/// Turns texts of the system's code page into textures, in one font.
class TextRasteriser {
 public:
  TextRasteriser() = default;
  TextRasteriser(const TextRasteriser&) = delete;
  TextRasteriser& operator=(const TextRasteriser&) = delete;
  virtual ~TextRasteriser() = default;

  /// Pixels that the text is wide when lines end where it says so and nowhere else; below 0 when it failed.
  virtual int32_t Width(const char* text) = 0;

  /// The pieces of a text on lines of at most `room` pixels, broken between words. False when it failed.
  virtual bool Make(const char* text, int32_t room, TextPieces& pieces) = 0;
};

/// Texts by D3DX: its font lays them out and keeps their letters in textures of its own.
class D3dxTextRasteriser : public TextRasteriser {
 public:
  /// The font must outlive this.
  explicit D3dxTextRasteriser(ID3DXFont* font) : m_font(font) {}

  int32_t Width(const char* text) override;
  bool Make(const char* text, int32_t room, TextPieces& pieces) override;

 private:
  bool HoldsCharacters(const char* text, int32_t room);

  ID3DXFont* m_font;
};

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
