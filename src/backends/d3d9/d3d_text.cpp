// SPDX-License-Identifier: MIT
// D3DDisplayer: text over the picture, by the system's D3DX.
#include <algorithm>
#include <cstring>
#include <iterator>

#include "backends/d3d9/d3d_displayer.h"
#include "backends/d3d9/overlay_shapes.h"

namespace {

constexpr int32_t kTextLinesPerHeight = 20;
constexpr int32_t kLabelLinesPerHeight = 40;
constexpr char kLabelFace[] = "Arial";
constexpr DWORD kTextFormat = DT_NOCLIP | DT_WORDBREAK;

/// Whether `width` pixels hold each of the text's characters. Between edges that are too narrow for one, D3DX
/// may look for the end of the line for ever.
bool HoldsCharacters(ID3DXFont* font, const char* text, int64_t width) {
  TEXTMETRICA metrics{};
  if (!font->GetTextMetricsA(&metrics) || width >= metrics.tmMaxCharWidth + metrics.tmOverhang) return true;
  wchar_t wide[sizeof(TextItem::text)];
  const int count = MultiByteToWideChar(CP_ACP, 0, text, -1, wide, static_cast<int>(std::size(wide))) - 1;
  SIZE size{};
  return width > 0 && std::all_of(wide, wide + std::max(count, 0), [&](const wchar_t& character) {
           return GetTextExtentPoint32W(font->GetDC(), &character, 1, &size) && size.cx <= width;
         });
}

void DrawMeasured(ID3DXFont* font, const char* text, RECT rect, D3DCOLOR color) {
  if (!HoldsCharacters(font, text, int64_t{rect.right} - rect.left)) return;
  const auto length = static_cast<INT>(std::strlen(text));
  font->DrawTextA(nullptr, text, length, &rect, kTextFormat | DT_CALCRECT, color);
  font->DrawTextA(nullptr, text, length, &rect, kTextFormat, color);
}

}  // namespace

void D3DDisplayer::CreateFontOnce(ComPtr<ID3DXFont>& font, int32_t linesPerHeight, const char* face) {
  if (font) return;
  const INT height = -(Frame().height / linesPerHeight);
  m_pD3dx->createFont(m_pd3dDevice.get(), height, 0, FW_NORMAL, D3DX_DEFAULT, FALSE, DEFAULT_CHARSET,
                      OUT_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH | FF_DONTCARE, face, font.put());
}

void D3DDisplayer::DrawOSDText() {
  CreateFontOnce(m_pOSDFont, kTextLinesPerHeight, m_szFontFace);
  if (!m_pOSDFont) return;
  const auto items = [this] {
    CAutoLock guard(&m_textLock);
    return m_textItems;
  }();
  for (const TextItem& item : items)
    if (item.text[0]) DrawTextItem(item);
}

void D3DDisplayer::DrawTextItem(const TextItem& item) {
  const FrameSize frame = Frame();
  const uint32_t y = item.anchor == 1 ? m_dwHeight - item.y : item.y;
  DrawMeasured(m_pOSDFont.get(), item.text,
               {static_cast<LONG>(item.x), static_cast<LONG>(y), frame.width, frame.height},
               OpaqueArgb(item.color));
}

void D3DDisplayer::DrawLabel(const LabelEntry& label) {
  CreateFontOnce(m_pLabelFont, kLabelLinesPerHeight, kLabelFace);
  if (!m_pLabelFont || !label.text[0]) return;
  const FrameSize frame = Frame();
  DrawMeasured(m_pLabelFont.get(), label.text,
               {label.rect.left + 1, std::max(label.rect.top, 0), frame.width, frame.height}, kBlue);
}
