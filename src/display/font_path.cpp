// SPDX-License-Identifier: MIT
#include "display/font_path.h"

#include <windows.h>

#include <io.h>
#include <shlobj.h>

#include "display/font_choice.h"

namespace {

bool FileExists(const char* path) {
  return _access(path, 0) == 0;
}

std::string FindFontPath() {
  char folder[MAX_PATH]{};
  // The call reports failure as 0, not below, so the fallback stays out of use and a failure leaves paths
  // that start with a backslash. Clients rely on it.
  const int result = SHGetSpecialFolderPathA(nullptr, folder, CSIDL_FONTS, FALSE);
  return ChooseFontFile(result < 0 ? "C:\\Windows\\Fonts" : folder, &FileExists);
}

}  // namespace

const char* FontPath() {
  static const std::string path = FindFontPath();
  return path.c_str();
}
