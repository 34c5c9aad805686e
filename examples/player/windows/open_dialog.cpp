// SPDX-License-Identifier: MIT
#include "player/windows/open_dialog.h"

#include <commdlg.h>

#include "player/windows/text.h"

std::vector<std::string> AskForFiles(HWND main) {
  std::vector<wchar_t> answer(32768);
  OPENFILENAMEW dialog{};
  dialog.lStructSize = sizeof(dialog);
  dialog.hwndOwner = main;
  dialog.lpstrFilter =
      L"Recordings\0*.mp4;*.m4v;*.mov;*.3gp;*.mkv;*.avi;*.ts;*.m2ts;*.mts;*.mpg;*.mpeg;*.ps;*.vob;*.flv;*."
      L"h264;*.264;"
      L"*.h265;*.265;*.hevc;*.mjpeg;*.y4m;*.wav;*.aac;*.mp3;*.amr\0All files\0*.*\0";
  dialog.lpstrFile = answer.data();
  dialog.nMaxFile = static_cast<DWORD>(answer.size());
  dialog.Flags = OFN_ALLOWMULTISELECT | OFN_EXPLORER | OFN_FILEMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
  if (!GetOpenFileNameW(&dialog)) return {};
  // One path, or the folder and then the names in it, each with its zero, and one more at the end.
  const std::wstring first = answer.data();
  std::vector<std::string> paths;
  const wchar_t* name = answer.data() + first.size() + 1;
  while (*name) {
    paths.push_back(Utf8(first + L"\\" + name));
    name += std::wstring_view(name).size() + 1;
  }
  if (paths.empty()) paths.push_back(Utf8(first));
  return paths;
}
