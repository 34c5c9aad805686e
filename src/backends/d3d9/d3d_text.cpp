// SPDX-License-Identifier: MIT
// D3DDisplayer: text over the picture, by the system's D3DX.
#include <algorithm>
#include <cstring>

#include "backends/d3d9/d3d_displayer.h"
#include "backends/d3d9/overlay_shapes.h"

namespace {

constexpr int32_t kTextLinesPerHeight = 20;
constexpr int32_t kLabelLinesPerHeight = 40;
constexpr char kLabelFace[] = "Arial";
constexpr DWORD kTextFormat = DT_NOCLIP | DT_WORDBREAK;

void DrawMeasured(ID3DXFont* font, const char* text, RECT rect, D3DCOLOR color) {
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
  CAutoLock guard(&m_textLock);
  for (const TextItem& item : m_textItems)
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
