// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <atomic>
#include <cstdarg>
#include <cstdint>
#include <string_view>

#include "util/log_rules.h"
#include "util/mutex_lock.h"
#include "util/win_handles.h"

#if defined(__MINGW_PRINTF_FORMAT)
#define NIVRAL_PRINTF_LIKE(text, first) __attribute__((format(__MINGW_PRINTF_FORMAT, text, first)))
#else
#define NIVRAL_PRINTF_LIKE(text, first)
#endif

namespace libnivral {

/// The process-wide log: plain lines in size-limited files in Log\<program>\ beside the host program, each
/// also sent to the standard output. Lines below the LEVEL that LOG.INI beside the program sets are dropped.
/// Nothing is reported to callers: a line that cannot be written is lost. Any thread may write.
class CLogFile {
 public:
  /// Created on first use; the load handler's call comes before any thread can race for it.
  static CLogFile* GetInstance();

  /// Takes no lock: at the end of a process, threads that no longer exist may have left it held.
  static void DestroyInstance();

  CLogFile(const CLogFile&) = delete;
  CLogFile& operator=(const CLogFile&) = delete;

  /// The prefix of the names of files opened from now on; cut at 259 characters.
  void SetName(const wchar_t* name);

  /// In a wide format %s stands for wide text, as everywhere in Windows' run-time library.
  void Write(int level, const wchar_t* format, ...);
  void WriteA(int level, const char* format, ...) NIVRAL_PRINTF_LIKE(3, 4);

  /// The message, two blanks and the bytes as hexadecimal pairs.
  void WriteHex(int level, const uint8_t* bytes, int count, const wchar_t* format, ...);
  void WriteText(int level, const wchar_t* text);

 private:
  static constexpr size_t kTextSize = 10240;

  CLogFile();
  ~CLogFile() = default;

  /// Reads the settings when they are due, and says whether a call of `level` is to be written.
  bool Passes(int level);
  void RereadSettings(uint64_t coarseMs);
  void ReadSettings();

  /// The following are called with the lock held.
  size_t FormatWide(size_t room, const wchar_t* format, va_list arguments);
  void WriteLine(std::wstring_view message);
  bool HasRoomInFile();
  bool OpenFile();
  void CloseFile();

  wchar_t m_szSettingsPath[MAX_PATH]{};
  std::atomic<uint32_t> m_dwSize = kDefaultLogSizeMiB;
  std::atomic<int32_t> m_nLevel = kDefaultLogLevel;
  wchar_t m_szFolder[MAX_PATH]{};
  wchar_t m_szFilePath[MAX_PATH]{};
  SYSTEMTIME m_openedAt{};
  SYSTEMTIME m_now{};
  uint32_t m_dwWritten = 0;
  UniqueFile m_hFile;
  CMutexLock m_lock;
  wchar_t m_szName[MAX_PATH] = L"unknow";
  char m_szLine[kTextSize]{};
  wchar_t m_szMessage[kTextSize]{};
  char m_szNarrow[kTextSize]{};
  std::atomic<uint32_t> m_dwSettingsReadAt;
  CoarseDeadline m_reread;
};

/// A line of the level that a backend's steps and ordinary failures have.
void LogStep(const wchar_t* text);

}  // namespace libnivral
