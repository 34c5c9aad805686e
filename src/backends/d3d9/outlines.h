// SPDX-License-Identifier: MIT
#pragma once

#include <d3dx9.h>

#include "backends/d3d9/primitive_batch.h"
#include "picture/pixel_rect.h"

namespace libnivral {

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

}  // namespace libnivral
