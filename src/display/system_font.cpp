// SPDX-License-Identifier: MIT
#include "display/system_font.h"

#include <windows.h>

#include <vector>

#include "util/win_handles.h"

namespace {

/// Tables of GetFontData: a collection of fonts as a whole, or the file of a single font.
constexpr DWORD kCollection = 0x66637474;
constexpr DWORD kFile = 0;

std::vector<uint8_t> Read() {
  const UniqueHandleOf<HDC, &DeleteDC> dc(CreateCompatibleDC(nullptr));
  const UniqueHandleOf<HFONT, &DeleteObject> font(
      CreateFontW(-12, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_TT_ONLY_PRECIS,
                  CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH | FF_DONTCARE, L"MS Shell Dlg"));
  const HGDIOBJ before = SelectObject(dc.get(), font.get());
  std::vector<uint8_t> data;
  for (const DWORD table : {kCollection, kFile}) {
    const DWORD size = GetFontData(dc.get(), table, 0, nullptr, 0);
    if (size == GDI_ERROR || size == 0) continue;
    data.resize(size);
    if (GetFontData(dc.get(), table, 0, data.data(), size) == size) break;
    data.clear();
  }
  SelectObject(dc.get(), before);
  return data;
}

}  // namespace

std::span<const uint8_t> SystemFontFile() {
  static const std::vector<uint8_t> data = Read();
  return data;
}
