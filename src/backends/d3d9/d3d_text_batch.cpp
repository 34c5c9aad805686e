// SPDX-License-Identifier: MIT
#include "backends/d3d9/d3d_text_batch.h"

namespace libnivral {
namespace {

/// Puts the middle of a texel on the middle of a pixel.
constexpr float kToPixelMiddle = -0.5f;

}  // namespace

bool TextPieces::Add(IDirect3DTexture9* texture, const RECT& texels, int32_t x, int32_t y) {
  D3DSURFACE_DESC whole{};
  if (count == pieces.size() || FAILED(texture->GetLevelDesc(0, &whole))) return false;
  texture->AddRef();
  TextPiece& piece = pieces[count++];
  piece.texture.reset(texture);
  const auto width = static_cast<float>(whole.Width);
  const auto height = static_cast<float>(whole.Height);
  piece.left = static_cast<float>(texels.left) / width;
  piece.top = static_cast<float>(texels.top) / height;
  piece.right = static_cast<float>(texels.right) / width;
  piece.bottom = static_cast<float>(texels.bottom) / height;
  piece.place = {x, y, x + static_cast<int32_t>(texels.right - texels.left),
                 y + static_cast<int32_t>(texels.bottom - texels.top)};
  return true;
}

TextBatch::~TextBatch() {
  Flush();
  if (!m_begun) return;
  m_device->SetTexture(0, nullptr);
  m_device->SetRenderState(D3DRS_ALPHABLENDENABLE, FALSE);
}

void TextBatch::Add(const TextPiece& piece, int64_t x, int64_t y, uint32_t colour) {
  if (piece.texture.get() != m_texture.get() || m_count == m_vertices.size()) {
    Flush();
    piece.texture->AddRef();
    m_texture.reset(piece.texture.get());
  }
  const auto at = [&](bool right, bool bottom) {
    const int64_t px = x + (right ? piece.place.right : piece.place.left);
    const int64_t py = y + (bottom ? piece.place.bottom : piece.place.top);
    return Vertex{
        static_cast<float>(px) + kToPixelMiddle, static_cast<float>(py) + kToPixelMiddle, 0.0f, 1.0f, colour,
        right ? piece.right : piece.left,        bottom ? piece.bottom : piece.top};
  };
  for (const Vertex& vertex : {at(false, false), at(true, true), at(false, true), at(true, true),
                               at(false, false), at(true, false)}) {
    m_vertices[m_count++] = vertex;
  }
}

/// What the device does with a texture and a vertex colour by itself, which is to multiply them, is right.
void TextBatch::Begin() {
  m_begun = true;
  m_device->SetFVF(D3DFVF_XYZRHW | D3DFVF_DIFFUSE | D3DFVF_TEX1);
  m_device->SetRenderState(D3DRS_SRCBLEND, D3DBLEND_SRCALPHA);
  m_device->SetRenderState(D3DRS_DESTBLEND, D3DBLEND_INVSRCALPHA);
  m_device->SetRenderState(D3DRS_ALPHABLENDENABLE, TRUE);
}

void TextBatch::Flush() {
  if (m_count == 0) return;
  if (!m_begun) Begin();
  m_device->SetTexture(0, m_texture.get());
  m_device->DrawPrimitiveUP(D3DPT_TRIANGLELIST, static_cast<UINT>(m_count / 3), m_vertices.data(),
                            sizeof(Vertex));
  m_count = 0;
}

}  // namespace libnivral
