// SPDX-License-Identifier: MIT
#include "backends/ddraw/ddraw_text.h"

#include <algorithm>
#include <cstring>

#include "display/text_layout.h"

namespace libnivral {
namespace {

constexpr int32_t kMinHeight = 4;
constexpr COLORREF kColourMask = 0x00FFFFFF;

constexpr char kLabelFace[] = "Arial";
constexpr COLORREF kLabelColour = RGB(255, 255, 255);
constexpr int32_t kMinLabelHeight = 7;  ///< below it letters are blots

HFONT CreateLabelFont(int32_t cellHeight, int32_t averageWidth) {
  return CreateFontA(cellHeight, averageWidth, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET,
                     OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, NONANTIALIASED_QUALITY,
                     DEFAULT_PITCH | FF_DONTCARE, kLabelFace);
}

/// In the client's code page, as it comes.
int ToWide(const char (&text)[sizeof(TextItem::text)], wchar_t (&wide)[sizeof(TextItem::text)]) {
  return MultiByteToWideChar(CP_ACP, 0, text, -1, wide, static_cast<int>(std::size(wide)));
}

}  // namespace

void GdiText::SetFont(const char* face, int32_t areaHeight) {
  const int32_t height = std::max(OsdFontHeight(areaHeight), kMinHeight);
  if (m_font && height == m_height && std::strncmp(m_face, face, sizeof(m_face)) == 0) return;
  LOGFONTA font{};
  font.lfHeight = -height;
  font.lfWeight = FW_NORMAL;
  font.lfCharSet = DEFAULT_CHARSET;
  font.lfQuality = NONANTIALIASED_QUALITY;
  std::strncpy(font.lfFaceName, face, sizeof(font.lfFaceName) - 1);
  m_font.reset(CreateFontIndirectA(&font));
  m_height = height;
  std::memcpy(m_face, font.lfFaceName, sizeof(m_face));
}

void GdiText::Draw(HDC dc, const TextItem& item, const DisplayMap& map) const {
  const auto place = PlaceOsdText(item, {map});
  // GDI counts in fewer bits than places may need.
  if (!place || place->y < -map.displayHeight) return;

  wchar_t wide[sizeof(item.text)];
  if (ToWide(item.text, wide) <= 1) return;
  RECT area{place->x, place->y, map.displayWidth, map.displayHeight};
  SelectObject(dc, m_font.get());
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, item.colour & kColourMask);
  DrawTextW(dc, wide, -1, &area, DT_NOPREFIX | DT_WORDBREAK | DT_EXPANDTABS);
}

/// Fonts and the widths of their letters are asked for once, not for every label.
bool GdiLabels::SetHeight(HDC dc, int32_t height) {
  if (height == m_height) return m_font && m_narrowFont;
  m_height = height;
  m_font.reset(CreateLabelFont(height, 0));
  if (!m_font) return false;
  SelectObject(dc, m_font.get());
  TEXTMETRICA metrics{};
  if (!GetTextMetricsA(dc, &metrics) || !GetCharWidth32A(dc, 0, 127, m_widths.data())) return false;
  m_narrowFont.reset(CreateLabelFont(height, std::max<int32_t>(metrics.tmAveCharWidth * 3 / 5, 1)));
  return m_narrowFont != nullptr;
}

int32_t GdiLabels::WidthOf(const char* text) const {
  int32_t width = 0;
  for (; *text; ++text)
    width += m_widths[static_cast<size_t>(*text) % m_widths.size()];
  return width;
}

/// All are equally high.
bool GdiLabels::Readable(const Labels& labels, const DisplayMap& map) {
  return !labels.empty() && map.PixelY(labels[0].area.Height()) >= kMinLabelHeight;
}

void GdiLabels::Draw(HDC dc, const Labels& labels, const DisplayMap& map) {
  if (!SetHeight(dc, static_cast<int32_t>(map.PixelY(labels[0].area.Height())))) return;
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, kLabelColour);
  for (const OverlayLabel& label : labels) {
    if (Intersect(label.area, {0, 0, map.videoWidth, map.videoHeight}).Empty()) continue;
    RECT area{static_cast<LONG>(map.PixelX(label.area.left)), static_cast<LONG>(map.PixelY(label.area.top)),
              static_cast<LONG>(map.PixelX(label.area.right)),
              static_cast<LONG>(map.PixelY(label.area.bottom))};
    const bool fits = WidthOf(label.text) <= area.right - area.left;
    SelectObject(dc, (fits ? m_font : m_narrowFont).get());
    DrawTextA(dc, label.text, -1, &area, DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_NOPREFIX);
  }
}

}  // namespace libnivral
