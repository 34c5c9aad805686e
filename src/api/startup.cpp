// SPDX-License-Identifier: MIT
// Start-up, shutdown and opening of panes.
#include "api/backend_table.h"
#include "api/direct3d_probe.h"
#include "api/guard.h"
#include "backends/ddraw/ddraw_displayer.h"
#include "backends/sdl2/sdl_library.h"
#include "nivral/nivral.h"
#include "util/log_file.h"

namespace libnivral {

LibraryState g_library;

namespace {

uint32_t Open(void** phDraw, uint32_t type);

/// Without a Direct3D run-time the whole process goes over to SDL. SDL may not have been asked for at
/// start-up, so it is started here; NIVRAL_UnInitialize shuts it down.
uint32_t FallBackToSdl(void** phDraw) {
  CLogFile::GetInstance()->Write(2, L"NIVRAL_DWOpenDrawEx: Direct3D 9 cannot be loaded, SDL2 is used");
  g_library.bUseSDL = 1;
  StartSdl();
  return Open(phDraw, kSdl);
}

uint32_t Open(void** phDraw, uint32_t type) {
  const Backend& backend = FindBackend(type);
  CLogFile::GetInstance()->Write(2, L"NIVRAL_DWOpenDrawEx: new %ls", backend.name);
  CreatedPane pane = backend.create();
  if (pane.runTimeMissing) return FallBackToSdl(phDraw);
  if (!pane.displayer) return kApiFailed;
  *phDraw = pane.displayer.release();
  return kApiOk;
}

}  // namespace
}  // namespace libnivral

using namespace libnivral;  // NOLINT(google-global-names-in-headers): no header

extern "C" {

uint32_t NIVRAL_CALL NIVRAL_Initialize(void) {
  return Guarded([] {
    CLogFile::GetInstance()->Write(1, L"NIVRAL_Initialize");
    return NIVRAL_InitializeEx(g_library.bUseSDL);
  });
}

uint32_t NIVRAL_CALL NIVRAL_InitializeEx(uint32_t bUseSDL) {
  Guarded([&] {
    g_library.bUseSDL = bUseSDL;
    CLogFile::GetInstance()->Write(2, L"NIVRAL_InitializeEx: bUseSDL=%d", bUseSDL);
    if (bUseSDL) {
      StartSdl();
    } else {
      CDirectDraw::SetTablesBuilt();
      g_library.bNoDirect3D = ProbeDirect3D().value_or(g_library.bNoDirect3D);
    }
    return kApiOk;
  });
  return kApiOk;
}

uint32_t NIVRAL_CALL NIVRAL_UnInitialize(void) {
  if (!g_library.bUseSDL) return kApiFailed;
  return Guarded([] {
    StopSdl();
    return kApiOk;
  });
}

uint32_t NIVRAL_CALL NIVRAL_DWOpenDraw(void** phDraw) {
  if (g_library.bUseSDL) return NIVRAL_DWOpenDrawEx(phDraw, kSdl);
  return NIVRAL_DWOpenDrawEx(phDraw, g_library.bNoDirect3D ? kDirectDraw : kDirect3D);
}

uint32_t NIVRAL_CALL NIVRAL_DWOpenDrawEx(void** phDraw, uint32_t type) {
  if (!phDraw) return kApiFailed;
  return Guarded([&] { return Open(phDraw, type); });
}

}  // extern "C"
