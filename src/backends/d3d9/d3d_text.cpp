// SPDX-License-Identifier: MIT
// Text over the picture.
#include "backends/d3d9/d3d_text.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "backends/d3d9/d3d_displayer.h"
#include "backends/d3d9/d3d_text_rasteriser.h"
#include "backends/d3d9/d3d_vertices.h"
#include "display/overlay_layout.h"
#include "display/text_layout.h"

namespace libnivral {
namespace {

constexpr char kLabelFace[] = "Arial";

}  // namespace

/// A text as it was made for a room, or for any that holds its longest line.
struct TextPainter::Entry {
  char text[sizeof(TextItem::text)];
  int32_t room = kOneLine;
  int32_t width = 0;
  uint64_t lastUse = 0;
  size_t pieceCount = 0;
  std::unique_ptr<TextPiece[]> pieces;

  bool Fits(const char* wanted, int32_t wantedRoom) const {
    return (room == kOneLine ? width <= wantedRoom : room == wantedRoom) && std::strcmp(text, wanted) == 0;
  }
};

TextPainter::TextPainter() = default;
TextPainter::~TextPainter() = default;

void TextPainter::Start(IDirect3DDevice9* device, const TextFont& font) {
  m_device = device;
  m_font = font;
  m_byD3dx = font.d3dx != nullptr;
  if (m_byD3dx) {
    m_rasteriser.reset(new (std::nothrow) D3dxTextRasteriser(font.d3dx));
  } else {
    FallBackToGdi();
  }
}

void TextPainter::Stop() {
  Forget();
  m_rasteriser.reset();
}

void TextPainter::Forget() {
  for (auto& entry : m_cache)
    entry.reset();
}

void TextPainter::FallBackToGdi() {
  Forget();
  m_byD3dx = false;
  // A text that starts above the picture may reach into it.
  m_rasteriser.reset(new (std::nothrow)
                         GdiTextRasteriser(m_device, m_font.height, m_font.face, 2 * m_font.frameHeight));
}

void TextPainter::Draw(TextBatch& batch, const char* text, const OsdPlace& place, uint32_t colour) {
  const int32_t room = std::min(place.wrapWidth, kOneLine - 1);
  if (room <= 0) return;
  const Entry* entry = Find(text, room);
  for (size_t i = 0; entry && i < entry->pieceCount; ++i)
    batch.Add(entry->pieces[i], place.x, place.y, colour);
}

const TextPainter::Entry* TextPainter::Find(const char* text, int32_t room) {
  ++m_uses;
  for (auto& entry : m_cache) {
    if (!entry || !entry->Fits(text, room)) continue;
    entry->lastUse = m_uses;
    return entry.get();
  }
  return Make(text, room);
}

/// In the place of the text that has not been used for longest.
const TextPainter::Entry* TextPainter::Make(const char* text, int32_t room) {
  std::unique_ptr<Entry> made(new (std::nothrow) Entry);
  if (!made) return nullptr;
  std::strncpy(made->text, text, sizeof(made->text) - 1);
  made->text[sizeof(made->text) - 1] = '\0';
  if (!Rasterise(text, room, *made)) {
    // A device that was lost meanwhile is no fault of the font's.
    if (!m_byD3dx || m_device->TestCooperativeLevel() != D3D_OK) return nullptr;
    FallBackToGdi();
    if (!Rasterise(text, room, *made)) return nullptr;
  }
  made->lastUse = m_uses;
  const auto age = [](const auto& entry) { return entry ? entry->lastUse : 0; };
  auto& oldest = *std::min_element(m_cache.begin(), m_cache.end(),
                                   [&](const auto& a, const auto& b) { return age(a) < age(b); });
  oldest = std::move(made);
  return oldest.get();
}

bool TextPainter::Rasterise(const char* text, int32_t room, Entry& entry) {
  const std::unique_ptr<TextPieces> pieces(new (std::nothrow) TextPieces);
  entry.width = m_rasteriser && pieces ? m_rasteriser->Width(text) : -1;
  if (entry.width < 0) return false;
  entry.room = entry.width <= room ? kOneLine : room;
  if (!m_rasteriser->Make(text, entry.room, *pieces)) return false;
  entry.pieces.reset(new (std::nothrow) TextPiece[pieces->count]);
  if (!entry.pieces) return false;
  entry.pieceCount = pieces->count;
  const auto end =
      std::move(pieces->pieces.begin(), pieces->pieces.begin() + static_cast<std::ptrdiff_t>(pieces->count),
                entry.pieces.get());
  // Letters of one text do not cover each other: those of one texture can be drawn together.
  std::sort(entry.pieces.get(), end,
            [](const TextPiece& a, const TextPiece& b) { return a.texture.get() < b.texture.get(); });
  return true;
}

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
