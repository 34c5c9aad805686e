// SPDX-License-Identifier: MIT
#include "display/font_path.h"

#include <windows.h>

#include <io.h>
#include <shlobj.h>

#include "display/font_choice.h"
#include "util/mutex_lock.h"

namespace {

static_assert(sizeof(FontFile) == MAX_PATH);

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

}  // namespace

const char* FontPath() {
  CAutoLock guard(&g_pathLock);
  if (!*g_path) FindFontPath();
  return g_path;
}
