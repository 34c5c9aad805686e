// SPDX-License-Identifier: MIT
// D3DDisplayer: boxes, labels and landmarks of algorithm records over the picture.
#include <new>

#include "backends/d3d9/d3d_displayer.h"
#include "backends/d3d9/d3d_shapes.h"
#include "display/overlay_layout.h"
#include "display/overlay_list.h"

namespace libnivral {
namespace {

/// The layout keeps corners within a range that these hold.
PixelRect ToPixels(const WideRect& r) {
  return {static_cast<int32_t>(r.left), static_cast<int32_t>(r.top), static_cast<int32_t>(r.right),
          static_cast<int32_t>(r.bottom)};
}

}  // namespace

/// Where D3DX has no line object, outlines are drawn without it.
bool D3DDisplayer::EnsureLine() {
  if (!m_pd3dDevice) return false;
  if (m_outlines) return true;
  if (!m_pLineBuffer) m_pLineBuffer.reset(new (std::nothrow) D3DXVECTOR2[D3dxOutlines::kCorners]);
  const auto hasLine = [this] {
    return m_pLine || SUCCEEDED(m_pD3dx->createLine(m_pd3dDevice.get(), m_pLine.put()));
  };
  if (m_pD3dx && m_pLineBuffer && hasLine()) {
    m_outlines.reset(new (std::nothrow) D3dxOutlines(m_pLine.get(), m_pLineBuffer.get()));
  } else {
    OutlineByVertices();
  }
  return m_outlines != nullptr;
}

bool D3DDisplayer::OutlineByVertices() {
  std::unique_ptr<Outlines> made(new (std::nothrow)
                                     VertexOutlines(m_pd3dDevice.get(), m_pVertexBuffer.get()));
  if (!made) return false;
  m_outlines = std::move(made);
  m_pLine.reset();
  return true;
}

bool D3DDisplayer::EnsureVertexBuffer() {
  if (!m_pd3dDevice) return false;
  return m_pVertexBuffer ||
         SUCCEEDED(m_pd3dDevice->CreateVertexBuffer(kOverlayVertices * sizeof(OverlayVertex), 0, kOverlayFvf,
                                                    D3DPOOL_DEFAULT, m_pVertexBuffer.put(), nullptr));
}

bool D3DDisplayer::CanDrawOverlays() {
  return m_pD3D9 && m_pd3dDevice && m_pd3dSurface && EnsureVertexBuffer() && EnsureLine();
}

bool D3DDisplayer::IsSideVisible(const WideRect& corners) const {
  return SidesVisible(corners, static_cast<int32_t>(m_d3dpp.BackBufferWidth),
                      static_cast<int32_t>(m_d3dpp.BackBufferHeight));
}

void D3DDisplayer::DrawShape(ShapeBatch& batch, const OverlayShape& shape) {
  switch (shape.kind) {
    case OverlayShape::Kind::Fill:
      batch.FillRect(ToPixels(shape.corners), OpaqueArgb(shape.colour));
      break;
    case OverlayShape::Kind::Outline:
      DrawOutline(batch, shape);
      break;
    case OverlayShape::Kind::Brackets:
      DrawThickBrackets(batch, shape);
      break;
    case OverlayShape::Kind::Disc:
    default:
      DrawDisc(batch, shape);
      break;
  }
}

void D3DDisplayer::DrawOutline(ShapeBatch& batch, const OverlayShape& shape) {
  const D3DCOLOR colour = OpaqueArgb(shape.colour);
  for (int32_t i = 0; i < shape.size; ++i) {
    const WideRect pass = shape.corners.Grown(-i);
    if (!IsSideVisible(pass) || batch.DrawOutline(ToPixels(pass), colour)) continue;
    // Some D3DX can make a line object and not draw with it. A device lost meanwhile is not its fault.
    if (!m_pLine || m_pd3dDevice->TestCooperativeLevel() != D3D_OK) return;
    if (!OutlineByVertices() || !batch.DrawOutline(ToPixels(pass), colour)) return;
  }
}

void D3DDisplayer::DrawThickBrackets(ShapeBatch& batch, const OverlayShape& shape) {
  for (int32_t i = 0; i < shape.size; ++i) {
    const WideRect pass = shape.corners.Grown(-i);
    if (IsSideVisible(pass)) batch.DrawCornerBrackets(pass, shape.parts, OpaqueArgb(shape.colour));
  }
}

/// Also any other form that has no primitives of its own: by the rectangles that its pixels are.
void D3DDisplayer::DrawDisc(ShapeBatch& batch, const OverlayShape& shape) {
  m_discParts.clear();
  AppendPixels(m_discParts, shape, static_cast<int32_t>(m_d3dpp.BackBufferWidth),
               static_cast<int32_t>(m_d3dpp.BackBufferHeight));
  if (m_discParts.empty()) return;
  batch.DrawDisc(ToPixels(shape.corners), m_discParts, OpaqueArgb(shape.colour));
}

void D3DDisplayer::PaintRecord(RecordView record) {
  if (!CanDrawOverlays()) return;
  LayOutRecord(m_overlays, record, Map(), Direct3DStyle(Frame().height));
  {
    ShapeBatch batch(m_outlines, m_pd3dDevice.get(), m_pVertexBuffer.get());
    for (const OverlayShape& shape : m_overlays.shapes)
      DrawShape(batch, shape);
  }
  TextBatch letters(m_pd3dDevice.get());
  for (const OverlayLabel& label : m_overlays.labels)
    DrawLabel(letters, label);
}

void D3DDisplayer::DrawAlgInfo() {
  if (m_alg.shown) PaintRecord(&m_alg.record);
}

void D3DDisplayer::DrawDsmAlgInfo() {
  if (m_dsm.shown) PaintRecord(&m_dsm.record);
}

}  // namespace libnivral
