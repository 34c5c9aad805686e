// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// The process-wide log.
class CLogFile {
 public:
  /// Created on first use; the load handler's call comes before any thread can race for it.
  static CLogFile* GetInstance();
  static void DestroyInstance();

  void SetName(const wchar_t* name);
  void Write(int level, const wchar_t* format, ...);
#if defined(__GNUC__)
  __attribute__((format(printf, 3, 4)))
#endif
  void
  WriteA(int level, const char* format, ...);
  void WriteHex(int level, const uint8_t* bytes, int count, const wchar_t* format, ...);
  void WriteText(int level, const wchar_t* text);
};
