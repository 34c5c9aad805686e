// SPDX-License-Identifier: MIT
// D3DDisplayer: text over the picture.
#include <algorithm>

#include "backends/d3d9/d3d_displayer.h"
#include "backends/d3d9/d3d_vertices.h"
#include "display/osd_layout.h"
#include "display/overlay_style.h"

namespace libnivral {
namespace {

constexpr char kLabelFace[] = "Arial";

}  // namespace

/// Where D3DX has no font, the painter draws without it.
void D3DDisplayer::StartOnce(TextPainter& painter, ComPtr<ID3DXFont>& font, int32_t height,
                             const char* face) {
  if (painter.Started()) return;
  if (m_pD3dx && !font) {
    m_pD3dx->createFont(m_pd3dDevice.get(), -height, 0, FW_NORMAL, D3DX_DEFAULT, FALSE, DEFAULT_CHARSET,
                        OUT_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH | FF_DONTCARE, face, font.put());
  }
  painter.Start(m_pd3dDevice.get(), {font.get(), -height, face, Frame().height});
}

void D3DDisplayer::DrawOSDText() {
  const auto items = [this] {
    CAutoLock guard(&m_textLock);
    return m_textItems;
  }();
  StartOnce(m_osdPainter, m_pOSDFont, OsdFontHeight(Frame().height), m_szFontFace);
  const TextSpace space{Map(), false};
  TextBatch batch(m_pd3dDevice.get());
  for (const TextItem& item : items) {
    if (const auto place = PlaceOsdText(item, space))
      m_osdPainter.Draw(batch, item.text, *place, OpaqueArgb(FromColourRef(item.colour)));
  }
}

void D3DDisplayer::DrawLabel(TextBatch& batch, const OverlayLabel& label) {
  StartOnce(m_labelPainter, m_pLabelFont, Direct3DLabelHeight(Frame().height), kLabelFace);
  if (label.text[0])
    m_labelPainter.Draw(batch, label.text, {label.x, label.y, Frame().width - label.x},
                        OpaqueArgb(kOverlayBlue));
}

}  // namespace libnivral
