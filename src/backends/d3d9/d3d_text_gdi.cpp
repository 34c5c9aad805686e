// SPDX-License-Identifier: MIT
#include "backends/d3d9/d3d_text_rasteriser.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

namespace libnivral {
namespace {

/// Side of the textures, which every device can have. Larger texts are cut into pieces.
constexpr int32_t kPageSide = 512;
constexpr UINT kGdiFormat = kTextFormat | DT_NOPREFIX;
constexpr COLORREF kWhiteInk = RGB(255, 255, 255);

struct WideText {
  explicit WideText(const char* text)
      : length(MultiByteToWideChar(CP_ACP, 0, text, -1, characters, static_cast<int>(std::size(characters))) -
               1) {}
  wchar_t characters[sizeof(TextItem::text)]{};
  int length;
};

}  // namespace

/// A black bitmap, top row first, selected into a device context for as long as it lives.
struct GdiTextRasteriser::Canvas {
  Canvas(HDC target, const SIZE& extent) : dc(target), size(extent) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = size.cx;
    info.bmiHeader.biHeight = -size.cy;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    bitmap.reset(CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    pixels = static_cast<const uint32_t*>(bits);
    if (bitmap) before = SelectObject(dc, bitmap.get());
  }
  ~Canvas() {
    if (before) SelectObject(dc, before);
  }
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;

  HDC dc;
  SIZE size;
  UniqueHandleOf<HBITMAP, &DeleteObject> bitmap;
  const uint32_t* pixels = nullptr;
  HGDIOBJ before = nullptr;
};

GdiTextRasteriser::GdiTextRasteriser(IDirect3DDevice9* device, int32_t height, const char* face,
                                     int32_t maxHeight)
    : m_device(device),
      m_maxHeight(maxHeight),
      m_margin(std::abs(height) / 4),
      m_font(CreateFontA(height, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                         CLIP_DEFAULT_PRECIS, ANTIALIASED_QUALITY, DEFAULT_PITCH | FF_DONTCARE, face)),
      m_dc(CreateCompatibleDC(nullptr)),
      m_shelf(kPageSide) {
  if (!m_dc || !m_font) return;
  SelectObject(m_dc.get(), m_font.get());
  SetBkMode(m_dc.get(), TRANSPARENT);
  SetTextColor(m_dc.get(), kWhiteInk);
}

bool GdiTextRasteriser::Measure(const char* text, int32_t room, SIZE& size) {
  const WideText wide(text);
  RECT extent{0, 0, room, 0};
  if (!m_dc || !m_font || wide.length < 0 ||
      DrawTextW(m_dc.get(), wide.characters, wide.length, &extent, kGdiFormat | DT_CALCRECT) == 0) {
    return false;
  }
  size = {extent.right, extent.bottom};
  return true;
}

int32_t GdiTextRasteriser::Width(const char* text) {
  SIZE size{};
  return Measure(text, kOneLine, size) ? static_cast<int32_t>(size.cx) : -1;
}

bool GdiTextRasteriser::Make(const char* text, int32_t room, TextPieces& pieces) {
  SIZE size{};
  if (!Measure(text, room, size)) return false;
  if (size.cx <= 0 || size.cy <= 0) return true;
  RECT place{m_margin, 0, m_margin + size.cx, size.cy};
  size = {size.cx + 2 * m_margin, std::min<LONG>(size.cy, m_maxHeight)};
  const Canvas canvas(m_dc.get(), size);
  if (!canvas.bitmap) return false;
  const WideText wide(text);
  DrawTextW(m_dc.get(), wide.characters, wide.length, &place, kGdiFormat);
  GdiFlush();
  for (int32_t y = 0; y < size.cy; y += kPageSide) {
    for (int32_t x = 0; x < size.cx; x += kPageSide) {
      const PixelRect part{x, y, std::min<int32_t>(x + kPageSide, size.cx),
                           std::min<int32_t>(y + kPageSide, size.cy)};
      if (!Store(canvas, part, pieces)) return false;
    }
  }
  return true;
}

bool GdiTextRasteriser::FindPlace(int32_t width, int32_t height, ShelfPlace& place) {
  if (m_page) {
    if (const auto found = m_shelf.Place(width, height)) {
      place = *found;
      return true;
    }
  }
  m_page.reset();
  m_shelf = Shelf(kPageSide);
  place = *m_shelf.Place(width, height);
  return SUCCEEDED(m_device->CreateTexture(kPageSide, kPageSide, 1, 0, D3DFMT_A8R8G8B8, D3DPOOL_MANAGED,
                                           m_page.put(), nullptr));
}

/// White, as opaque as the canvas is bright.
bool GdiTextRasteriser::Store(const Canvas& canvas, const PixelRect& part, TextPieces& pieces) {
  const auto width = static_cast<int32_t>(part.Width());
  const auto height = static_cast<int32_t>(part.Height());
  ShelfPlace place{};
  if (!FindPlace(width, height, place)) return false;
  const RECT texels{place.x, place.y, place.x + width, place.y + height};
  D3DLOCKED_RECT locked{};
  if (FAILED(m_page->LockRect(0, &locked, &texels, 0))) return false;
  for (int32_t row = 0; row < height; ++row) {
    const uint32_t* from = canvas.pixels + int64_t{part.top + row} * canvas.size.cx + part.left;
    auto* to = reinterpret_cast<uint32_t*>(static_cast<uint8_t*>(locked.pBits) + int64_t{row} * locked.Pitch);
    std::transform(from, from + width, to, [](uint32_t pixel) { return pixel << 24 | 0x00FFFFFFu; });
  }
  m_page->UnlockRect(0);
  return pieces.Add(m_page.get(), texels, part.left - m_margin, part.top);
}

}  // namespace libnivral
