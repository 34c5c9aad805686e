// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <filesystem>
#include <string>
#include <vector>

#include "util/win_handles.h"

/// A folder in the temporary folder with a copy of log_writer.exe in it, deleted with everything at the end.
class LogHost {
 public:
  LogHost();
  ~LogHost();
  LogHost(const LogHost&) = delete;
  LogHost& operator=(const LogHost&) = delete;

  const std::filesystem::path& Folder() const { return m_folder; }
  std::filesystem::path Program() const { return m_folder / L"Long host name.exe"; }
  std::filesystem::path LogFolder() const { return m_folder / L"Log" / L"Long host name"; }
  std::filesystem::path OutputFile() const { return m_folder / L"stdout.txt"; }

  void SetSettings(const std::string& text) const;

  /// Starts a task of log_writer with its standard output going to OutputFile, or without any.
  UniqueFile Start(const std::wstring& task, bool withOutput = true) const;

  /// Starts a task and waits; the exit code, or 12345 when the task did not end in time.
  DWORD Run(const std::wstring& task, bool withOutput = true) const;

  static DWORD Wait(HANDLE process);

  /// Names of the log files in order of name, and their contents one after the other.
  std::vector<std::wstring> LogNames() const;
  std::string LogText() const;

  /// The messages of the log, without what stands before them; fails the test where a line is malformed.
  std::vector<std::string> Messages() const;

 private:
  std::filesystem::path m_folder;
};

std::string ReadWholeFile(const std::filesystem::path& path);
