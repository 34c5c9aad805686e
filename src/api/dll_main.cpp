// SPDX-License-Identifier: MIT
#include <windows.h>

#include "api/guard.h"
#include "backends/ddraw/ddraw_displayer.h"
#include "colour/convert.h"
#include "util/log_file.h"

namespace libnivral {
namespace {

/// Keeps the library in the process until that ends. Each unloading would leave something behind: of the
/// run-time linked into it a TLS slot, of which a process has 1088, the memory it keeps for throwing when
/// there is none, and what it notes of every thread that once threw or waited; of SDL its window procedure in
/// a client's window and timers that are still to fire.
void StayLoaded(HINSTANCE library) {
  HMODULE pinned = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                     reinterpret_cast<const wchar_t*>(library), &pinned);
}

/// Both run under the loader's lock.
void OnProcessAttach() noexcept {
  Guarded([] {
    ChooseKernels();
    CDirectDraw::BuildTables();
    CDirectDraw::SetTablesBuilt();
    CLogFile::GetInstance()->SetName(L"libnivral");
    return kApiOk;
  });
}

void OnProcessDetach() noexcept {
  CLogFile::DestroyInstance();
}

}  // namespace
}  // namespace libnivral

extern "C" BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, void*) {
  if (reason == DLL_PROCESS_ATTACH) {
    libnivral::StayLoaded(library);
    libnivral::OnProcessAttach();
  }
  if (reason == DLL_PROCESS_DETACH) libnivral::OnProcessDetach();
  return TRUE;
}
