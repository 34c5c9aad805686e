// SPDX-License-Identifier: MIT
// CDirectDraw: what is drawn over the video, on the worker thread.
#include <algorithm>
#include <cstring>

#include "backends/ddraw/ddraw_device.h"
#include "backends/ddraw/ddraw_displayer.h"
#include "backends/ddraw/ddraw_layout.h"
#include "display/mosaic_layout.h"
#include "display/overlay_layout.h"
#include "display/overlay_list.h"

namespace libnivral {
namespace {

/// Fills rectangles with one colour, without a brush to make and free. The colour stays with the DC.
void FillRects(HDC dc, const RectList& rects, const OverlayColour& colour) {
  SetDCBrushColor(dc, RGB(colour.r, colour.g, colour.b));
  const auto brush = static_cast<HBRUSH>(GetStockObject(DC_BRUSH));
  for (const PixelRect& r : rects) {
    const RECT rect{r.left, r.top, r.right, r.bottom};
    FillRect(dc, &rect, brush);
  }
}

}  // namespace

/// Whether there is anything to be drawn over the picture. The mosaic rectangle is in client coordinates.
bool CDirectDraw::CollectOverlays(const PixelRect& area, const PaneSettings& settings) {
  Overlays& o = m_overlays;
  o.map = {static_cast<int32_t>(m_dwWidth), static_cast<int32_t>(m_dwHeight),
           static_cast<int32_t>(area.Width()), static_cast<int32_t>(area.Height())};
  const MosaicSettings& mosaic = settings.mosaic;
  o.mosaic = mosaic.flag
                 ? LayoutMosaic(RelativeTo(area.left, area.top, mosaic.rect), MosaicBlockSize(mosaic.level),
                                o.map.displayWidth, o.map.displayHeight)
                 : MosaicGrid{};
  {
    CAutoLock guard(&m_textLock);
    o.texts = m_textItems;
    std::memcpy(o.face, m_szFontFace, sizeof(o.face));
  }
  o.anyText =
      std::any_of(o.texts.begin(), o.texts.end(), [](const TextItem& item) { return item.text[0] != '\0'; });
  o.anyLabel = GdiLabels::Readable(m_burnedIn.labels, o.map);
  o.needDC = o.anyText || o.anyLabel || settings.displayCB.function;
  m_shown.records.ForEachPainted([&](RecordView) { o.needDC = true; });
  return o.needDC || o.mosaic.columns != 0;
}

HRESULT CDirectDraw::PaintOverlays(const PixelRect& area, const PaneSettings& settings) {
  const Overlays& o = m_overlays;
  const HRESULT hr = o.mosaic.columns != 0 ? PixelateMosaic() : DD_OK;
  if (FAILED(hr) || !o.needDC) return hr;

  const SurfaceDC dc(m_composition.get());
  if (FAILED(dc.Result())) return dc.Result();
  const SavedDC state(dc.Get());
  if (o.anyLabel) m_labels.Draw(dc.Get(), m_burnedIn.labels, o.map);
  if (o.anyText) {
    m_text.SetFont(o.face, o.map.displayHeight);
    for (const TextItem& item : o.texts)
      m_text.Draw(dc.Get(), item, o.map);
  }
  m_shown.records.ForEachPainted([&](RecordView record) { DrawRecord(dc.Get(), record); });
  CallDisplayCallback(dc.Get(), area, settings);
  return DD_OK;
}

void CDirectDraw::DrawRecord(HDC dc, RecordView record) {
  const DisplayMap& map = m_overlays.map;
  LayOutRecord(m_painted, record, map, DirectDrawStyle());
  const SavedDC state(dc);
  for (const OverlayShape& shape : m_painted.shapes) {
    m_pixels.clear();
    AppendPixels(m_pixels, shape, map.displayWidth, map.displayHeight);
    FillRects(dc, m_pixels, shape.colour);
  }
}

HRESULT CDirectDraw::PixelateMosaic() {
  const SurfaceLock lock(m_composition.get());
  if (FAILED(lock.Result())) return lock.Result();
  const DisplayMap& map = m_overlays.map;
  FillBlocks(lock.Pixels(), lock.Pitch(), BytesPerPixel(m_device.Format()), map.displayWidth,
             map.displayHeight, m_overlays.mosaic);
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

}  // namespace libnivral
