// SPDX-License-Identifier: MIT
#include <windows.h>

#include "api/load_handler.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, void*) {
  if (reason == DLL_PROCESS_ATTACH) OnProcessAttach();
  if (reason == DLL_PROCESS_DETACH) OnProcessDetach();
  return TRUE;
}
