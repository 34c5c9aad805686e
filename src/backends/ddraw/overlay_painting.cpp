// SPDX-License-Identifier: MIT
// CDirectDraw: what is drawn over the video, on the worker thread.
#include <algorithm>

#include "backends/ddraw/direct_draw.h"
#include "backends/ddraw/surface_access.h"

HRESULT CDirectDraw::PaintOverlays(const PixelRect& area) {
  std::array<TextItem, kTextItemCount> texts;
  {
    CAutoLock guard(&m_textLock);
    texts = m_textItems;
  }
  const bool anyText =
      std::any_of(texts.begin(), texts.end(), [](const TextItem& item) { return item.text[0] != '\0'; });
  if (!anyText && !m_dsmDue && !m_displayCB.function) return DD_OK;

  const SurfaceDC dc(m_composition.get());
  if (FAILED(dc.Result())) return dc.Result();
  const OverlayScale scale{static_cast<int32_t>(area.Width()), static_cast<int32_t>(area.Height()),
                           static_cast<int32_t>(m_dwWidth), static_cast<int32_t>(m_dwHeight)};
  const SavedDC state(dc.Get());
  if (anyText) DrawTexts(dc.Get(), texts, scale);
  CallDisplayCallback(dc.Get(), area);
  return DD_OK;
}

void CDirectDraw::DrawTexts(HDC dc, const std::array<TextItem, kTextItemCount>& texts,
                            const OverlayScale& scale) {
  m_text.SetFont(m_szFontFace, scale.areaHeight);
  for (const TextItem& item : texts)
    m_text.Draw(dc, item, scale);
}

/// The client draws in client coordinates of its window, wherever the play rectangle is.
void CDirectDraw::CallDisplayCallback(HDC dc, const PixelRect& area) {
  const auto callback = m_displayCB;
  if (!callback.function || !IsWindow(m_hPlayWnd)) return;
  const SavedDC state(dc);
  SetViewportOrgEx(dc, -area.left, -area.top, nullptr);
  callback.function(m_nIndex, dc, m_dwWidth, m_dwHeight, m_shownParam2, m_rcClient.right - m_rcClient.left,
                    m_rcClient.bottom - m_rcClient.top, m_dwMirrorMode, callback.user);
}
