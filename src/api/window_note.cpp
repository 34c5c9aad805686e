// SPDX-License-Identifier: MIT
#include "api/window_note.h"

#include "util/log_file.h"

namespace {

bool RunsUnderWine() {
  const HMODULE system = GetModuleHandleW(L"ntdll.dll");
  return system && GetProcAddress(system, "wine_get_version");
}

}  // namespace

void NoteWindow(HWND window) {
  if ((GetWindowLongW(window, GWL_STYLE) & WS_CHILD) && RunsUnderWine())
    CLogFile::GetInstance()->Write(2, L"NIVRAL_DWSetHwnd: Wine may show nothing in a child window");
}
