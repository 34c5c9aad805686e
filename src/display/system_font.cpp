// SPDX-License-Identifier: MIT
#include "display/system_font.h"

#include <windows.h>

#include "util/mutex_lock.h"
#include "util/nothrow_list.h"
#include "util/win_handles.h"

namespace {

/// Tables of GetFontData: a collection of fonts as a whole, or the file of a single font.
constexpr DWORD kCollection = 0x66637474;
constexpr DWORD kFile = 0;

CMutexLock g_dataLock;
NothrowList<uint8_t> g_data;

/// Leaves the data empty when there is no such font, or no memory for it.
void Read() {
  const UniqueHandleOf<HDC, &DeleteDC> dc(CreateCompatibleDC(nullptr));
  const UniqueHandleOf<HFONT, &DeleteObject> font(
      CreateFontW(-12, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_TT_ONLY_PRECIS,
                  CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH | FF_DONTCARE, L"MS Shell Dlg"));
  const HGDIOBJ before = SelectObject(dc.get(), font.get());
  for (const DWORD table : {kCollection, kFile}) {
    const DWORD size = GetFontData(dc.get(), table, 0, nullptr, 0);
    if (size == GDI_ERROR || size == 0) continue;
    if (g_data.resize(size) && GetFontData(dc.get(), table, 0, g_data.data(), size) == size) break;
    g_data.clear();
  }
  SelectObject(dc.get(), before);
}

}  // namespace

std::span<const uint8_t> SystemFontFile() {
  CAutoLock guard(&g_dataLock);
  if (g_data.empty()) Read();
  return {g_data.data(), g_data.size()};
}
