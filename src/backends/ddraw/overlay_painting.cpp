// SPDX-License-Identifier: MIT
// CDirectDraw: what is drawn over the video, on the worker thread.
#include <algorithm>
#include <cstring>

#include "backends/ddraw/direct_draw.h"
#include "backends/ddraw/draw_layout.h"
#include "backends/ddraw/pixelate.h"
#include "backends/ddraw/surface_access.h"
#include "display/box_layout.h"

namespace {

/// Fills rectangles with one colour, without a brush to make and free.
void FillRects(HDC dc, const RectList& rects, COLORREF color) {
  const SavedDC state(dc);
  SetDCBrushColor(dc, color);
  const auto brush = static_cast<HBRUSH>(GetStockObject(DC_BRUSH));
  for (const PixelRect& r : rects) {
    const RECT rect{r.left, r.top, r.right, r.bottom};
    FillRect(dc, &rect, brush);
  }
}

}  // namespace

HRESULT CDirectDraw::PaintOverlays(const PixelRect& area, const PaneSettings& settings) {
  const HRESULT hr = settings.mosaic.flag ? PixelateMosaic(area, settings.mosaic) : DD_OK;
  if (FAILED(hr)) return hr;
  std::array<TextItem, kTextItemCount> texts;
  char face[sizeof(m_szFontFace)];
  {
    CAutoLock guard(&m_textLock);
    texts = m_textItems;
    std::memcpy(face, m_szFontFace, sizeof(face));
  }
  const bool anyText =
      std::any_of(texts.begin(), texts.end(), [](const TextItem& item) { return item.text[0] != '\0'; });
  const OverlayScale scale{static_cast<int32_t>(area.Width()), static_cast<int32_t>(area.Height()),
                           static_cast<int32_t>(m_dwWidth), static_cast<int32_t>(m_dwHeight)};
  const bool anyLabel = m_shown.alg && m_labels.Layout(*m_shown.alg, scale);
  if (!anyText && !anyLabel && !m_shown.dsm && !settings.displayCB.function) return DD_OK;

  const SurfaceDC dc(m_composition.get());
  if (FAILED(dc.Result())) return dc.Result();
  const SavedDC state(dc.Get());
  if (anyLabel) m_labels.Draw(dc.Get(), scale);
  if (anyText) {
    m_text.SetFont(face, scale.areaHeight);
    for (const TextItem& item : texts)
      m_text.Draw(dc.Get(), item, scale);
  }
  if (m_shown.dsm) {
    m_dsmRects.clear();
    LayoutDsmRecord(m_dsmRects, *m_shown.dsm,
                    {scale.videoWidth, scale.videoHeight, scale.areaWidth, scale.areaHeight});
    FillRects(dc.Get(), m_dsmRects, RGB(0, 255, 0));
  }
  CallDisplayCallback(dc.Get(), area, settings);
  return DD_OK;
}

/// The mosaic rectangle is in client coordinates.
HRESULT CDirectDraw::PixelateMosaic(const PixelRect& area, const MosaicSettings& mosaic) {
  const auto width = static_cast<int32_t>(area.Width());
  const auto height = static_cast<int32_t>(area.Height());
  const MosaicGrid grid =
      LayoutMosaic(SeenFrom(area.left, area.top, mosaic.rect), MosaicBlockSize(mosaic.level), width, height);
  if (grid.columns == 0) return DD_OK;
  const SurfaceLock lock(m_composition.get());
  if (FAILED(lock.Result())) return lock.Result();
  FillBlocks(lock.Pixels(), lock.Pitch(), BytesPerPixel(m_device.Format()), width, height, grid);
  return DD_OK;
}

/// The client draws in client coordinates of its window, wherever the play rectangle is.
void CDirectDraw::CallDisplayCallback(HDC dc, const PixelRect& area, const PaneSettings& settings) {
  const auto& callback = settings.displayCB;
  if (!callback.function || !IsWindow(m_hPlayWnd)) return;
  const SavedDC state(dc);
  SetViewportOrgEx(dc, -area.left, -area.top, nullptr);
  const PixelRect& client = settings.client;
  callback.function(settings.index, dc, m_dwWidth, m_dwHeight, m_shown.param2, client.right - client.left,
                    client.bottom - client.top, settings.mirrorMode, callback.user);
}
