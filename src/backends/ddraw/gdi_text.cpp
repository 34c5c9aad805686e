// SPDX-License-Identifier: MIT
#include "backends/ddraw/gdi_text.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr int32_t kLinesPerArea = 20;
constexpr int32_t kMinHeight = 4;
constexpr uint32_t kAnchorBottom = 1;
constexpr COLORREF kColorMask = 0x00FFFFFF;

/// In the client's code page, as it comes.
int ToWide(const char (&text)[sizeof(TextItem::text)], wchar_t (&wide)[sizeof(TextItem::text)]) {
  return MultiByteToWideChar(CP_ACP, 0, text, -1, wide, static_cast<int>(std::size(wide)));
}

}  // namespace

void GdiText::SetFont(const char* face, int32_t areaHeight) {
  const int32_t height = std::max(areaHeight / kLinesPerArea, kMinHeight);
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

void GdiText::Draw(HDC dc, const TextItem& item, const OverlayScale& scale) const {
  const auto x = static_cast<int32_t>(item.x);
  const auto y = static_cast<int32_t>(item.y);
  if (x < 0 || y < 0) return;
  const int64_t left = scale.X(x);
  const int64_t top = scale.Y(item.anchor == kAnchorBottom ? int64_t{scale.videoHeight} - y : y);
  if (left >= scale.areaWidth || top >= scale.areaHeight || top < -scale.areaHeight) return;

  wchar_t wide[sizeof(item.text)];
  if (ToWide(item.text, wide) <= 1) return;
  RECT area{static_cast<LONG>(left), static_cast<LONG>(top), scale.areaWidth, scale.areaHeight};
  SelectObject(dc, m_font.get());
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, item.color & kColorMask);
  DrawTextW(dc, wide, -1, &area, DT_NOPREFIX | DT_WORDBREAK | DT_EXPANDTABS);
}
