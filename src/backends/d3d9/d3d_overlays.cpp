// SPDX-License-Identifier: MIT
// D3DDisplayer: boxes, labels and landmarks of algorithm records over the picture.
#include <algorithm>
#include <array>
#include <new>

#include "backends/d3d9/box_layer.h"
#include "backends/d3d9/d3d_displayer.h"
#include "backends/d3d9/primitive_batch.h"
#include "picture/pixel_rect.h"

namespace {

/// The labels of one pass, drawn after all boxes.
struct LabelList {
  std::array<LabelEntry, kMaxBoxes> entries;
  size_t count = 0;

  void Append(const LabelEntry& label) { entries[count++] = label; }
};

}  // namespace

/// Where D3DX has no line object, outlines are drawn without it.
bool D3DDisplayer::EnsureLine() {
  if (!m_pd3dDevice) return false;
  if (m_outlines) return true;
  if (!m_pLineBuffer) m_pLineBuffer.reset(new (std::nothrow) D3DXVECTOR2[D3dxOutlines::kCorners]);
  if (m_pD3dx && m_pLineBuffer && SUCCEEDED(m_pD3dx->createLine(m_pd3dDevice.get(), m_pLine.put()))) {
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

bool D3DDisplayer::IsSideVisible(const PixelRect& rect) const {
  return SidesVisible(rect, static_cast<int32_t>(m_d3dpp.BackBufferWidth),
                      static_cast<int32_t>(m_d3dpp.BackBufferHeight));
}

void D3DDisplayer::DrawOutline(BoxLayer& layer, const PixelRect& rect, uint16_t type, int32_t thickness) {
  const D3DCOLOR color = type == kPersonClass ? kOrangeRed : kGreen;
  for (int32_t i = 0; i < thickness; ++i) {
    const PixelRect pass = NestedRect(rect, i);
    if (!IsSideVisible(pass) || layer.Outline(pass, color)) continue;
    // Some D3DX can make a line object and not draw with it. A device lost meanwhile is not its fault.
    if (!m_pLine || m_pd3dDevice->TestCooperativeLevel() != D3D_OK) return;
    if (!OutlineByVertices() || !layer.Outline(pass, color)) return;
  }
}

void D3DDisplayer::DrawThickBrackets(const PixelRect& rect, int32_t thickness) {
  PrimitiveBatch lines(m_pd3dDevice.get(), m_pVertexBuffer.get(), D3DPT_LINELIST);
  for (int32_t i = 0; i < thickness; ++i) {
    const PixelRect pass = NestedRect(rect, i);
    if (IsSideVisible(pass)) lines.Add(CornerBrackets(pass, kGreen));
  }
}

// All landmarks go into one batch, since every lock of the buffer may wait for the device. They have one
// colour: behind one that covers the picture nothing is left to draw.
void D3DDisplayer::DrawDiscs(const DsmRecord& record) {
  PrimitiveBatch parts(m_pd3dDevice.get(), m_pVertexBuffer.get(), D3DPT_TRIANGLELIST);
  const auto width = static_cast<int32_t>(m_d3dpp.BackBufferWidth);
  const auto height = static_cast<int32_t>(m_d3dpp.BackBufferHeight);
  const int32_t count = std::min<int32_t>(record.pointCount, kMaxLandmarks);
  for (int32_t i = 0; i < count; ++i) {
    const int32_t x = TruncToInt(record.x[i]);
    const int32_t y = TruncToInt(record.y[i]);
    ForEachDiscPart(x, y, record.pointSize, width, height,
                    [&](const PixelRect& part) { parts.Add(FilledRect(part, kGreen)); });
    if (DiscCovers(x, y, record.pointSize, width, height)) return;
  }
}

void D3DDisplayer::DrawAlgInfo() {
  if (!m_alg.shown || !CanDrawOverlays()) return;
  const AlgRecord& record = m_alg.record;
  LabelList types;
  LabelList distances;
  {
    BoxLayer layer(m_outlines, m_pd3dDevice.get(), m_pVertexBuffer.get());
    for (int32_t i = 0; i < std::min<int32_t>(record.count, kMaxBoxes); ++i) {
      const std::optional<AlgBoxLayout> box = LayOutAlgBox(record, i, Frame());
      if (!box) continue;
      DrawOutline(layer, box->outline, record.classId[i], record.lineWidth);
      layer.Fill(box->typeBackground, box->labelColor);
      types.Append(box->typeLabel);
      if (!box->distanceLabel) continue;
      layer.Fill(box->distanceLabel->rect, box->labelColor);
      distances.Append(*box->distanceLabel);
    }
  }
  TextBatch letters(m_pd3dDevice.get());
  for (const LabelList* list : {&types, &distances})
    for (size_t i = 0; i < list->count; ++i)
      DrawLabel(letters, list->entries[i]);
}

void D3DDisplayer::DrawDsmAlgInfo() {
  if (!m_dsm.shown || !CanDrawOverlays()) return;
  const DsmRecord& record = m_dsm.record;
  DrawDiscs(record);
  for (int32_t i = 0; i < std::min(record.boxCount, kMaxBoxes); ++i)
    if (const std::optional<PixelRect> box = LayOutDsmBox(record, i, Frame()))
      DrawThickBrackets(*box, record.pointSize);
}
