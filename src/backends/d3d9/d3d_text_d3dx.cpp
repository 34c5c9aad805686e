// SPDX-License-Identifier: MIT
#include "backends/d3d9/d3d_text_rasteriser.h"

#include <algorithm>
#include <cmath>
#include <iterator>

// COM interfaces have no virtual destructor, and this compiler's warning looks at the base class.
#if defined(__GNUC__)
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
#endif

namespace libnivral {
namespace {

constexpr D3DCOLOR kWhite = 0xFFFFFFFF;

/// Stands in for the sprite that a font draws its letters through, and notes which part of which texture goes
/// where. So the font does its work once for a text instead of once for every frame.
class LetterRecorder final : public ID3DXSprite {
 public:
  explicit LetterRecorder(TextPieces& pieces) : m_pieces(pieces) {}
  LetterRecorder(const LetterRecorder&) = delete;
  LetterRecorder& operator=(const LetterRecorder&) = delete;
  virtual ~LetterRecorder() = default;

  bool Complete() const { return m_complete; }

  HRESULT WINAPI Draw(IDirect3DTexture9* texture, const RECT* part, const D3DXVECTOR3* center,
                      const D3DXVECTOR3* position, D3DCOLOR) noexcept override {
    if (!texture || !part || !position) return D3DERR_INVALIDCALL;
    const float x = position->x - (center ? center->x : 0);
    const float y = position->y - (center ? center->y : 0);
    m_complete = m_pieces.Add(texture, *part, static_cast<int32_t>(std::lround(x)),
                              static_cast<int32_t>(std::lround(y))) &&
                 m_complete;
    return m_complete ? D3D_OK : E_OUTOFMEMORY;
  }

  HRESULT WINAPI QueryInterface(REFIID, void** object) noexcept override {
    *object = nullptr;
    return E_NOINTERFACE;
  }
  ULONG WINAPI AddRef() noexcept override { return 1; }
  ULONG WINAPI Release() noexcept override { return 1; }
  HRESULT WINAPI GetDevice(IDirect3DDevice9**) noexcept override { return E_NOTIMPL; }
  HRESULT WINAPI GetTransform(D3DXMATRIX* transform) noexcept override {
    D3DXMatrixIdentity(transform);
    return D3D_OK;
  }
  HRESULT WINAPI SetTransform(const D3DXMATRIX*) noexcept override { return D3D_OK; }
  HRESULT WINAPI SetWorldViewRH(const D3DXMATRIX*, const D3DXMATRIX*) noexcept override { return D3D_OK; }
  HRESULT WINAPI SetWorldViewLH(const D3DXMATRIX*, const D3DXMATRIX*) noexcept override { return D3D_OK; }
  HRESULT WINAPI Begin(DWORD) noexcept override { return D3D_OK; }
  HRESULT WINAPI Flush() noexcept override { return D3D_OK; }
  HRESULT WINAPI End() noexcept override { return D3D_OK; }
  HRESULT WINAPI OnLostDevice() noexcept override { return D3D_OK; }
  HRESULT WINAPI OnResetDevice() noexcept override { return D3D_OK; }

 private:
  TextPieces& m_pieces;
  bool m_complete = true;
};

}  // namespace

int32_t D3dxTextRasteriser::Width(const char* text) {
  RECT extent{0, 0, kOneLine, 0};
  const INT height = m_font->DrawTextA(nullptr, text, -1, &extent, kTextFormat | DT_CALCRECT, kWhite);
  return height == 0 ? -1 : static_cast<int32_t>(extent.right);
}

bool D3dxTextRasteriser::Make(const char* text, int32_t room, TextPieces& pieces) {
  RECT extent{0, 0, HoldsCharacters(text, room) ? room : kOneLine, 0};
  if (m_font->DrawTextA(nullptr, text, -1, &extent, kTextFormat | DT_CALCRECT, kWhite) == 0) return false;
  LetterRecorder recorder(pieces);
  return m_font->DrawTextA(&recorder, text, -1, &extent, kTextFormat, kWhite) != 0 && recorder.Complete();
}

/// Between edges too narrow for one of the characters D3DX may look for the end of the line for ever.
bool D3dxTextRasteriser::HoldsCharacters(const char* text, int32_t room) {
  TEXTMETRICA metrics{};
  if (m_font->GetTextMetricsA(&metrics) && room >= metrics.tmMaxCharWidth + metrics.tmOverhang) return true;
  wchar_t wide[sizeof(TextItem::text)];
  const int count = MultiByteToWideChar(CP_ACP, 0, text, -1, wide, static_cast<int>(std::size(wide))) - 1;
  return std::all_of(wide, wide + std::max(count, 0), [&](const wchar_t& character) {
    SIZE size{};
    return GetTextExtentPoint32W(m_font->GetDC(), &character, 1, &size) && size.cx <= room;
  });
}

}  // namespace libnivral
