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

INT Length(const char* text) {
  return static_cast<INT>(std::strlen(text));
}

RECT Measure(ID3DXFont* font, const char* text, RECT room, D3DCOLOR color) {
  font->DrawTextA(nullptr, text, Length(text), &room, kTextFormat | DT_CALCRECT, color);
  return room;
}

void Draw(ID3DXFont* font, const char* text, RECT rect, D3DCOLOR color) {
  font->DrawTextA(nullptr, text, Length(text), &rect, kTextFormat, color);
}

}  // namespace

void D3DDisplayer::CreateFontOnce(ComPtr<ID3DXFont>& font, int32_t linesPerHeight, const char* face) {
  if (font) return;
  const INT height = -(Frame().height / linesPerHeight);
  m_pD3dx->createFont(m_pd3dDevice.get(), height, 0, FW_NORMAL, D3DX_DEFAULT, FALSE, DEFAULT_CHARSET,
                      OUT_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH | FF_DONTCARE, face, font.put());
}

void D3DDisplayer::DrawOSDText() {
  if (!m_pOSDFont) m_measuredTexts = {};
  CreateFontOnce(m_pOSDFont, kTextLinesPerHeight, m_szFontFace);
  if (!m_pOSDFont) return;
  CAutoLock guard(&m_textLock);
  for (size_t i = 0; i < m_textItems.size(); ++i)
    if (m_textItems[i].text[0]) DrawTextItem(m_textItems[i], m_measuredTexts[i]);
}

// Measuring costs nearly as much as drawing.
void D3DDisplayer::DrawTextItem(const TextItem& item, MeasuredText& measured) {
  const FrameSize frame = Frame();
  const uint32_t y = item.anchor == 1 ? m_dwHeight - item.y : item.y;
  const D3DCOLOR color = OpaqueArgb(item.color);
  const RECT room{static_cast<LONG>(item.x), static_cast<LONG>(y), frame.width, frame.height};
  if (!EqualRect(&room, &measured.room) || std::strcmp(item.text, measured.text) != 0) {
    measured.room = room;
    std::memcpy(measured.text, item.text, sizeof(measured.text));
    measured.rect = Measure(m_pOSDFont.get(), item.text, room, color);
  }
  Draw(m_pOSDFont.get(), item.text, measured.rect, color);
}

void D3DDisplayer::DrawLabel(const LabelEntry& label) {
  CreateFontOnce(m_pLabelFont, kLabelLinesPerHeight, kLabelFace);
  if (!m_pLabelFont || !label.text[0]) return;
  const FrameSize frame = Frame();
  const RECT room{label.rect.left + 1, std::max(label.rect.top, 0), frame.width, frame.height};
  Draw(m_pLabelFont.get(), label.text, Measure(m_pLabelFont.get(), label.text, room, kBlue), kBlue);
}
