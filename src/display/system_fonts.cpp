// SPDX-License-Identifier: MIT
#include <windows.h>

#include <io.h>
#include <shlobj.h>

#include <cstring>

#include "display/fonts.h"
#include "util/mutex_lock.h"
#include "util/nothrow_list.h"
#include "util/win_handles.h"

namespace libnivral {
namespace {

static_assert(sizeof(FontFile) == MAX_PATH && sizeof(FontFace) == LF_FACESIZE);

CMutexLock g_pathLock;
FontFile g_path;

bool FileExists(const char* path) {
  return _access(path, 0) == 0;
}

void FindFontPath() {
  char folder[MAX_PATH]{};
  // The call reports failure as 0, not below, so the fallback stays out of use and a failure leaves paths
  // that start with a backslash. Clients rely on it.
  const int result = SHGetSpecialFolderPathA(nullptr, folder, CSIDL_FONTS, FALSE);
  ChooseFontFile(g_path, result < 0 ? "C:\\Windows\\Fonts" : folder, &FileExists);
}

/// Tables of GetFontData: a collection of fonts as a whole, or the file of a single font.
constexpr DWORD kCollection = 0x66637474;
constexpr DWORD kFile = 0;

CMutexLock g_dataLock;
NothrowList<uint8_t> g_data;

/// Leaves the data empty when there is no such font, or no memory for it.
void ReadSystemFont() {
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

const char* FontPath() {
  CAutoLock guard(&g_pathLock);
  if (!*g_path) FindFontPath();
  return g_path;
}

std::span<const uint8_t> SystemFontFile() {
  CAutoLock guard(&g_dataLock);
  if (g_data.empty()) ReadSystemFont();
  return {g_data.data(), g_data.size()};
}

void IconTitleFace(FontFace& face) {
  LOGFONTA iconTitle{};
  std::strcpy(iconTitle.lfFaceName, "Tahoma");
  SystemParametersInfoA(SPI_GETICONTITLELOGFONT, sizeof(iconTitle), &iconTitle, 0);
  std::memcpy(face, iconTitle.lfFaceName, sizeof(face));
}

}  // namespace libnivral
