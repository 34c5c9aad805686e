// SPDX-License-Identifier: MIT
#include "backends/sdl2/sdl_error.h"

#include <SDL.h>
#include <windows.h>

#include <cstdio>

#include "util/log_file.h"

namespace libnivral {
namespace {

void Write(const char* operation, long) {
  WriteSdlError(1, operation);
}

}  // namespace

ErrorReporter g_sdlErrors(&Write, 0);
ErrorReporter g_sdlFrameErrors(&Write, kErrorIntervalMs);

void WriteSdlError(int level, const char* operation, const char* debuggerOperation) {
  const char* error = SDL_GetError();
  if (!error) return;
  CLogFile::GetInstance()->WriteA(level, "%s: SDL_GetError = %s", operation, error);
  char narrow[512];
  wchar_t wide[512];
  std::snprintf(narrow, sizeof(narrow), "%s: SDL_GetError = %s",
                debuggerOperation ? debuggerOperation : operation, error);
  if (MultiByteToWideChar(CP_ACP, 0, narrow, -1, wide, 512) > 0) OutputDebugStringW(wide);
}

}  // namespace libnivral
