// SPDX-License-Identifier: MIT
#include "util/log_file.h"

CLogFile* CLogFile::GetInstance() {
  static CLogFile log;
  return &log;
}
void CLogFile::DestroyInstance() {
}
void CLogFile::SetName(const wchar_t*) {
}
void CLogFile::Write(int, const wchar_t*, ...) {
}
void CLogFile::WriteA(int, const char*, ...) {
}
void CLogFile::WriteHex(int, const uint8_t*, int, const wchar_t*, ...) {
}
void CLogFile::WriteText(int, const wchar_t*) {
}
