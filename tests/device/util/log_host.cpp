// SPDX-License-Identifier: MIT
#include "device/util/log_host.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <fstream>
#include <iterator>
#include <regex>

namespace fs = std::filesystem;

namespace {

constexpr DWORD kLimitMs = 100000;
constexpr DWORD kHung = 12345;

fs::path TestProgram() {
  wchar_t path[MAX_PATH];
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  return path;
}

/// The host is started by its short name: the log goes by the long one.
std::wstring ShortName(const fs::path& path) {
  wchar_t text[MAX_PATH];
  const DWORD length = GetShortPathNameW(path.c_str(), text, MAX_PATH);
  return length > 0 && length < MAX_PATH ? std::wstring(text) : path.wstring();
}

}  // namespace

LogHost::LogHost() {
  static std::atomic<int> count;
  m_folder = fs::temp_directory_path() /
             (L"nivral log " + std::to_wstring(GetCurrentProcessId()) + L" " + std::to_wstring(count++));
  fs::create_directories(m_folder);
  fs::copy_file(TestProgram().replace_filename(L"log_writer.exe"), Program());
}

LogHost::~LogHost() {
  std::error_code ignored;
  fs::remove_all(m_folder, ignored);
}

void LogHost::SetSettings(const std::string& text) const {
  std::ofstream(m_folder / L"LOG.INI", std::ios::binary) << text;
}

UniqueFile LogHost::Start(const std::wstring& task, bool withOutput) const {
  SECURITY_ATTRIBUTES inherited{sizeof(inherited), nullptr, TRUE};
  UniqueFile output;
  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  startup.dwFlags = STARTF_USESTDHANDLES;
  if (withOutput) {
    output.reset(CreateFileW(OutputFile().c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                             &inherited, CREATE_ALWAYS, 0, nullptr));
    startup.hStdOutput = startup.hStdError = output.get();
  }
  const std::wstring program = ShortName(Program());
  std::wstring command = L"\"" + program + L"\" " + task;
  PROCESS_INFORMATION process{};
  if (!CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, TRUE,
                      withOutput ? 0 : DETACHED_PROCESS, nullptr, m_folder.c_str(), &startup, &process))
    return nullptr;
  CloseHandle(process.hThread);
  return UniqueFile(process.hProcess);
}

DWORD LogHost::Wait(HANDLE process) {
  DWORD code = kHung;
  if (WaitForSingleObject(process, kLimitMs) == WAIT_OBJECT_0)
    GetExitCodeProcess(process, &code);
  else
    TerminateProcess(process, kHung);
  return code;
}

DWORD LogHost::Run(const std::wstring& task, bool withOutput) const {
  return Wait(Start(task, withOutput).get());
}

std::vector<std::wstring> LogHost::LogNames() const {
  std::vector<std::wstring> names;
  if (fs::exists(LogFolder()))
    for (const auto& entry : fs::directory_iterator(LogFolder()))
      names.push_back(entry.path().filename().wstring());
  std::sort(names.begin(), names.end());
  return names;
}

std::string LogHost::LogText() const {
  std::string text;
  for (const std::wstring& name : LogNames())
    text += ReadWholeFile(LogFolder() / name);
  return text;
}

std::vector<std::string> LogHost::Messages() const {
  static const std::regex kLine(R"(\d{4}-\d\d-\d\d   \d\d:\d\d:\d\d    \[ [ \d]{3,}\d\] )");
  const std::string text = LogText();
  std::vector<std::string> messages;
  for (size_t start = 0; start < text.size();) {
    const size_t end = text.find("\r\n", start);
    std::smatch prefix;
    const std::string line = text.substr(start, end == std::string::npos ? end : end - start);
    if (end == std::string::npos ||
        !std::regex_search(line, prefix, kLine, std::regex_constants::match_continuous)) {
      ADD_FAILURE() << "malformed line: " << line;
      break;
    }
    messages.push_back(line.substr(static_cast<size_t>(prefix.length())));
    start = end + 2;
  }
  return messages;
}

std::string ReadWholeFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}
