// SPDX-License-Identifier: MIT
#include "util/log_file.h"

#include <cstddef>
#include <cstdio>
#include <cwchar>
#include <memory>
#include <new>

#include "util/log_format.h"
#include "util/log_system.h"

namespace libnivral {
namespace {

std::atomic<CLogFile*> g_instance;
// Not on the heap: the log is wanted most when memory is short.
alignas(CLogFile) std::byte g_room[sizeof(CLogFile)];

constexpr wchar_t kSection[] = L"LOG";
// Room that WriteHex leaves for its two blanks.
constexpr size_t kHexMessageRoom = 10236;

LogTime ToLogTime(const SYSTEMTIME& time) {
  return {time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond};
}

LogTime LocalTime() {
  SYSTEMTIME time;
  GetLocalTime(&time);
  return ToLogTime(time);
}

/// Keeps the system from asking its user for a disk while a log file is opened.
class QuietErrors {
 public:
  QuietErrors() { SetThreadErrorMode(SEM_FAILCRITICALERRORS, &m_before); }
  ~QuietErrors() { SetThreadErrorMode(m_before, nullptr); }
  QuietErrors(const QuietErrors&) = delete;
  QuietErrors& operator=(const QuietErrors&) = delete;

 private:
  DWORD m_before = 0;
};

}  // namespace

CLogFile* CLogFile::GetInstance() {
  CLogFile* instance = g_instance.load(std::memory_order_acquire);
  if (!instance) {
    instance = new (g_room) CLogFile;
    g_instance.store(instance, std::memory_order_release);
  }
  return instance;
}

void CLogFile::DestroyInstance() {
  if (CLogFile* const instance = g_instance.exchange(nullptr)) instance->~CLogFile();
}

CLogFile::CLogFile() : m_dwSettingsReadAt(MillisecondsSinceBoot()) {
  const ProgramPlace& host = HostProgram();
  JoinText(m_szSettingsPath, {host.folder, L"LOG.INI"});
  if (!host.name.empty()) JoinText(m_szFolder, {host.folder, L"Log\\", host.name, L"\\"});
  GetLocalTime(&m_openedAt);
  GetLocalTime(&m_now);
  m_reread.Restart(GetTickCount64());
  ReadSettings();
}

void CLogFile::SetName(const wchar_t* name) {
  if (!name) return;
  const CAutoLock lock(&m_lock);
  JoinText(m_szName, {std::wstring_view(name, wcsnlen(name, MAX_PATH - 1))});
}

void CLogFile::Write(int level, const wchar_t* format, ...) {
  if (!Passes(level) || !format) return;
  const CAutoLock lock(&m_lock);
  va_list arguments;
  va_start(arguments, format);
  const size_t length = FormatWide(kTextSize - 1, format, arguments);
  va_end(arguments);
  WriteLine({m_szMessage, length});
}

void CLogFile::WriteA(int level, const char* format, ...) {
  if (!Passes(level) || !format) return;
  const CAutoLock lock(&m_lock);
  const std::unique_ptr<char[]> narrow(new (std::nothrow) char[kTextSize]{});
  if (!narrow) return;
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(narrow.get(), kTextSize, format, arguments);
  va_end(arguments);
  const int length =
      MultiByteToWideChar(CP_ACP, 0, narrow.get(), static_cast<int>(strnlen(narrow.get(), kTextSize)),
                          m_szMessage, static_cast<int>(kTextSize - 1));
  WriteLine({m_szMessage, static_cast<size_t>(length)});
}

void CLogFile::WriteHex(int level, const uint8_t* bytes, int count, const wchar_t* format, ...) {
  if (!Passes(level) || !format) return;
  const CAutoLock lock(&m_lock);
  va_list arguments;
  va_start(arguments, format);
  size_t length = FormatWide(kHexMessageRoom, format, arguments);
  va_end(arguments);
  const bool hasBytes = bytes && count > 0;
  length = AppendHexDump(m_szMessage, length, {bytes, hasBytes ? static_cast<size_t>(count) : 0});
  WriteLine({m_szMessage, length});
}

void CLogFile::WriteText(int level, const wchar_t* text) {
  if (!Passes(level) || !text) return;
  const CAutoLock lock(&m_lock);
  WriteLine({text, wcsnlen(text, kTextSize - 1)});
}

bool CLogFile::Passes(int level) {
  const uint64_t coarse = GetTickCount64();
  if (m_reread.Passed(coarse)) RereadSettings(coarse);
  return level >= m_nLevel.load(std::memory_order_relaxed);
}

void CLogFile::RereadSettings(uint64_t coarseMs) {
  const uint32_t now = MillisecondsSinceBoot();
  uint32_t readAt = m_dwSettingsReadAt.load(std::memory_order_relaxed);
  if (!LogSettingsDue(now, readAt)) return;
  // One of the threads that come at this moment reads; the others go on with the settings as they are.
  if (!m_dwSettingsReadAt.compare_exchange_strong(readAt, now, std::memory_order_relaxed)) return;
  m_reread.Restart(coarseMs);
  ReadSettings();
}

void CLogFile::ReadSettings() {
  const auto read = [this](const wchar_t* key, uint32_t fallback) {
    return static_cast<int32_t>(
        GetPrivateProfileIntW(kSection, key, static_cast<INT>(fallback), m_szSettingsPath));
  };
  m_nLevel.store(read(L"LEVEL", kDefaultLogLevel), std::memory_order_relaxed);
  m_dwSize.store(AcceptedLogSizeMiB(read(L"SIZE", kDefaultLogSizeMiB)), std::memory_order_relaxed);
}

size_t CLogFile::FormatWide(size_t room, const wchar_t* format, va_list arguments) {
  m_szMessage[0] = L'\0';
  // Neither tells a cut text from a wrong format nor terminates a cut one.
  _vsnwprintf(m_szMessage, room, format, arguments);
  m_szMessage[room] = L'\0';
  return std::wcslen(m_szMessage);
}

void CLogFile::WriteLine(std::wstring_view message) {
  if (!HasRoomInFile()) return;
  const LogTime time = LocalTime();
  const size_t narrow = ToNarrowText(message, m_szNarrow);
  const size_t length =
      FormatLogLine(m_szLine, time, static_cast<int32_t>(GetCurrentThreadId()), {m_szNarrow, narrow});
  EchoToStandardOutput({m_szLine, length});
  if (AppendToSharedFile(m_hFile.get(), {m_szLine, length})) m_dwWritten += static_cast<uint32_t>(length);
}

bool CLogFile::HasRoomInFile() {
  // The size is asked of the system: another process may be writing to the same file. A file that has become
  // unreachable has the largest size.
  if (m_hFile && GetFileSize(m_hFile.get(), nullptr) > kLogFileLimit) CloseFile();
  return OpenFile();
}

bool CLogFile::OpenFile() {
  if (m_hFile) return true;
  // Without a folder of its own the log would trim and fill the current one.
  if (!m_szFolder[0]) return false;
  const QuietErrors quiet;
  MakeFolder(m_szFolder);
  TrimFolder(m_szFolder, uint64_t{m_dwSize.load(std::memory_order_relaxed)} << 20);
  GetLocalTime(&m_openedAt);
  GetLocalTime(&m_now);
  if (!FormatLogPath(m_szFilePath, m_szFolder, m_szName, ToLogTime(m_openedAt), ToLogTime(m_now)))
    return false;
  const HANDLE file =
      CreateFileW(m_szFilePath, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                  OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  m_hFile.reset(file);
  m_dwWritten = GetFileSize(file, nullptr);
  return true;
}

void CLogFile::CloseFile() {
  m_hFile.reset();
  m_dwWritten = 0;
}

void LogStep(const wchar_t* text) {
  CLogFile::GetInstance()->WriteText(1, text);
}

}  // namespace libnivral
