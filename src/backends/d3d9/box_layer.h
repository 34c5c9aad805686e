// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <array>
#include <memory>

#include "backends/d3d9/outlines.h"
#include "display/records.h"

/// Outlines and filled rectangles of one pass. They look as if drawn one after the other, but fills wait and
/// are drawn together after the outlines, unless an outline goes over one of them.
class BoxLayer {
 public:
  /// `outlines` may become another object meanwhile, but never none. All must outlive this.
  BoxLayer(std::unique_ptr<Outlines>& outlines, IDirect3DDevice9* device, IDirect3DVertexBuffer9* buffer)
      : m_outlines(outlines), m_fills(device, buffer, D3DPT_TRIANGLELIST) {}
  ~BoxLayer() { Finish(); }
  BoxLayer(const BoxLayer&) = delete;
  BoxLayer& operator=(const BoxLayer&) = delete;

  /// False when nothing was drawn.
  bool Outline(const PixelRect& rect, uint32_t color) {
    if (ReachesFill(rect)) Finish();
    return m_outlines->Draw(rect, color);
  }

  void Fill(const PixelRect& rect, uint32_t color) {
    if (m_filledCount == m_filled.size()) Finish();
    m_filled[m_filledCount++] = rect;
    m_fills.Add(FilledRect(rect, color));
  }

  void Finish() {
    m_outlines->Finish();
    m_fills.Flush();
    m_filledCount = 0;
  }

 private:
  /// The right and bottom sides of an outline lie on its edges, and nested ones may be inside out.
  bool ReachesFill(const PixelRect& rect) const {
    const PixelRect reach{std::min(rect.left, rect.right), std::min(rect.top, rect.bottom),
                          std::max(rect.left, rect.right) + 1, std::max(rect.top, rect.bottom) + 1};
    return std::any_of(m_filled.begin(), m_filled.begin() + static_cast<ptrdiff_t>(m_filledCount),
                       [&](const PixelRect& filled) { return !Intersect(reach, filled).Empty(); });
  }

  std::unique_ptr<Outlines>& m_outlines;
  PrimitiveBatch m_fills;
  size_t m_filledCount = 0;
  std::array<PixelRect, 2 * kMaxBoxes> m_filled;
};
