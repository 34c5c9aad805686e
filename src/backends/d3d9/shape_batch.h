// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <array>
#include <memory>

#include "backends/d3d9/outlines.h"
#include "display/overlay_shapes.h"
#include "display/records.h"

namespace libnivral {

/// The shapes of one record. They look as if drawn one after the other, but fills and discs wait and are
/// drawn together after the outlines, unless an outline goes over one of them, and brackets after both.
class ShapeBatch {
 public:
  /// `outlines` may become another object meanwhile, but never none. All must outlive this.
  ShapeBatch(std::unique_ptr<Outlines>& outlines, IDirect3DDevice9* device, IDirect3DVertexBuffer9* buffer)
      : m_outlines(outlines),
        m_fills(device, buffer, D3DPT_TRIANGLELIST),
        m_brackets(device, buffer, D3DPT_LINELIST) {}
  ~ShapeBatch() { Finish(); }
  ShapeBatch(const ShapeBatch&) = delete;
  ShapeBatch& operator=(const ShapeBatch&) = delete;

  /// False when nothing was drawn.
  bool DrawOutline(const PixelRect& rect, uint32_t colour) {
    if (!m_brackets.Empty() || ReachesFill(rect)) Finish();
    return m_outlines->Draw(rect, colour);
  }

  void FillRect(const PixelRect& rect, uint32_t colour) {
    Reserve(rect);
    m_fills.Add(FilledRect(rect, colour));
  }

  /// A disc, given by the rectangles that it is made of.
  void DrawDisc(const PixelRect& bounds, const RectList& parts, uint32_t colour) {
    Reserve(bounds);
    for (const PixelRect& part : parts)
      m_fills.Add(FilledRect(part, colour));
  }

  void DrawCornerBrackets(const WideRect& corners, int32_t parts, uint32_t colour) {
    m_brackets.Add(CornerBrackets(corners, parts, colour));
  }

 private:
  void Finish() {
    m_outlines->Finish();
    m_fills.Flush();
    m_brackets.Flush();
    m_filledCount = 0;
  }

  void Reserve(const PixelRect& rect) {
    if (!m_brackets.Empty() || m_filledCount == m_filled.size()) Finish();
    m_filled[m_filledCount++] = rect;
  }

  /// The right and bottom sides of an outline lie on its edges, and nested ones may be inside out.
  bool ReachesFill(const PixelRect& rect) const {
    const PixelRect reach{std::min(rect.left, rect.right), std::min(rect.top, rect.bottom),
                          std::max(rect.left, rect.right) + 1, std::max(rect.top, rect.bottom) + 1};
    return std::any_of(m_filled.begin(), m_filled.begin() + static_cast<ptrdiff_t>(m_filledCount),
                       [&](const PixelRect& filled) { return !Intersect(reach, filled).Empty(); });
  }

  std::unique_ptr<Outlines>& m_outlines;
  PrimitiveBatch m_fills;
  PrimitiveBatch m_brackets;
  size_t m_filledCount = 0;
  std::array<PixelRect, 2 * kMaxBoxes + kMaxLandmarks> m_filled;
};

}  // namespace libnivral
