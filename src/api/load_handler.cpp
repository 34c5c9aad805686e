// SPDX-License-Identifier: MIT
#include "api/load_handler.h"

#include "api/guard.h"
#include "backends/ddraw/direct_draw.h"
#include "colour/convert.h"
#include "util/log_file.h"

void OnProcessAttach() noexcept {
  Guarded([] {
    BuildConversionTables();
    CDirectDraw::BuildTables();
    CDirectDraw::MarkPrepared();
    CLogFile::GetInstance()->SetName(L"libnivral");
    return kApiOk;
  });
}

void OnProcessDetach() noexcept {
  CLogFile::DestroyInstance();
}
