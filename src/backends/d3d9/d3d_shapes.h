// SPDX-License-Identifier: MIT
// What the shapes of a record are drawn with.
#pragma once

#include <d3dx9.h>

#include <algorithm>
#include <array>
#include <memory>

#include "backends/d3d9/d3d_vertices.h"
#include "display/overlay_list.h"
#include "display/records.h"
#include "picture/pixel_rect.h"

namespace libnivral {

/// Vertices that fit the overlay vertex buffer: whole segments and whole pairs of triangles.
constexpr size_t kOverlayVertices = 3072;
static_assert(kOverlayVertices % 6 == 0);

constexpr DWORD kOverlayFvf = D3DFVF_XYZRHW | D3DFVF_DIFFUSE;

/// Gathers vertices of one kind of primitive and draws them through a vertex buffer of kOverlayVertices, full
/// buffer by full buffer and the rest at the end of its life.
class PrimitiveBatch {
 public:
  /// `type` is a line or triangle list. Device and buffer must outlive this.
  PrimitiveBatch(IDirect3DDevice9* device, IDirect3DVertexBuffer9* buffer, D3DPRIMITIVETYPE type)
      : m_device(device), m_buffer(buffer), m_type(type) {}
  ~PrimitiveBatch() { Flush(); }
  PrimitiveBatch(const PrimitiveBatch&) = delete;
  PrimitiveBatch& operator=(const PrimitiveBatch&) = delete;

  void Add(const OverlayVertex& vertex) {
    m_vertices[m_count++] = vertex;
    if (m_count == kOverlayVertices) Flush();
  }
  template <size_t N>
  void Add(const std::array<OverlayVertex, N>& vertices) {
    for (const OverlayVertex& vertex : vertices)
      Add(vertex);
  }
  void Flush();
  bool Empty() const { return m_count == 0; }

 private:
  IDirect3DDevice9* m_device;
  IDirect3DVertexBuffer9* m_buffer;
  D3DPRIMITIVETYPE m_type;
  size_t m_count = 0;
  std::array<OverlayVertex, kOverlayVertices> m_vertices;
};

/// Draws outlines of boxes, a pixel wide.
class Outlines {
 public:
  Outlines() = default;
  Outlines(const Outlines&) = delete;
  Outlines& operator=(const Outlines&) = delete;
  virtual ~Outlines() = default;

  /// False when nothing was drawn.
  virtual bool Draw(const PixelRect& rect, uint32_t colour) = 0;

  /// Everything up to here is on its way to the device, whose states are as before.
  virtual void Finish() = 0;
};

/// By the line object of D3DX, begun once for all outlines that follow each other.
class D3dxOutlines : public Outlines {
 public:
  static constexpr size_t kCorners = 5;

  /// `corners` has room for kCorners. Both must outlive this.
  D3dxOutlines(ID3DXLine* line, D3DXVECTOR2* corners) : m_line(line), m_corners(corners) {}
  ~D3dxOutlines() override { D3dxOutlines::Finish(); }

  bool Draw(const PixelRect& rect, uint32_t colour) override;
  void Finish() override;

 private:
  ID3DXLine* m_line;
  D3DXVECTOR2* m_corners;
  bool m_begun = false;
};

/// As vertices, for systems whose D3DX is missing or draws no lines.
class VertexOutlines : public Outlines {
 public:
  explicit VertexOutlines(IDirect3DDevice9* device, IDirect3DVertexBuffer9* buffer)
      : m_lines(device, buffer, D3DPT_LINELIST) {}

  bool Draw(const PixelRect& rect, uint32_t colour) override;
  void Finish() override { m_lines.Flush(); }

 private:
  PrimitiveBatch m_lines;
};

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

  /// A disc or another form, given by the rectangles that it is made of.
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
