// SPDX-License-Identifier: MIT
#include "player/open_dialog.h"

#include <commdlg.h>

#include <cstring>

std::vector<std::string> AskForFiles(HWND main) {
  std::vector<char> answer(32768);
  OPENFILENAMEA dialog{};
  dialog.lStructSize = sizeof(dialog);
  dialog.hwndOwner = main;
  dialog.lpstrFilter = "Clips and sounds (*.y4m, *.wav)\0*.y4m;*.wav\0All files\0*.*\0";
  dialog.lpstrFile = answer.data();
  dialog.nMaxFile = static_cast<DWORD>(answer.size());
  dialog.Flags = OFN_ALLOWMULTISELECT | OFN_EXPLORER | OFN_FILEMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
  if (!GetOpenFileNameA(&dialog)) return {};
  // One path, or the folder and then the names in it, each with its zero, and one more at the end.
  const std::string first = answer.data();
  std::vector<std::string> paths;
  for (const char* name = answer.data() + first.size() + 1; *name; name += std::strlen(name) + 1)
    paths.push_back(first + "\\" + name);
  if (paths.empty()) paths.push_back(first);
  return paths;
}
