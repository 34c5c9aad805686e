// SPDX-License-Identifier: MIT
#include "api/load_handler.h"

#include "backends/ddraw/direct_draw.h"
#include "colour/convert.h"
#include "util/log_file.h"

void OnProcessAttach() {
  BuildConversionTables();
  CDirectDraw::BuildTables();
  CDirectDraw::MarkPrepared();
  CLogFile::GetInstance()->SetName(L"libnivral");
}

void OnProcessDetach() {
  CLogFile::DestroyInstance();
}
