// SPDX-License-Identifier: MIT
#include "player_process.h"

#include <algorithm>
#include <fstream>
#include <iterator>

namespace {

constexpr DWORD kLongestRunMs = 60'000;

std::string TextOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string text{std::istreambuf_iterator<char>(file), {}};
  text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
  return text;
}

HANDLE OpenOutput(const std::string& path) {
  SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
  return CreateFileA(path.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                     CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
}

}  // namespace

std::string FreshFile(const char* name) {
  char folder[MAX_PATH] = "";
  GetTempPathA(sizeof(folder), folder);
  const std::string path = folder + std::to_string(GetCurrentProcessId()) + "-" + name;
  DeleteFileA(path.c_str());
  return path;
}

std::string ProgramFolder() {
  char path[MAX_PATH] = "";
  GetModuleFileNameA(nullptr, path, sizeof(path));
  const std::string self = path;
  return self.substr(0, self.find_last_of('\\') + 1);
}

RunningPlayer::RunningPlayer(const std::string& arguments, const std::string& folder)
    : m_outputPath(FreshFile("output.txt")) {
  std::string command = "\"" + folder + "nivral_player.exe\" --no-settings " + arguments;
  const libnivral::UniqueFile output(OpenOutput(m_outputPath));
  STARTUPINFOA startup{};
  startup.cb = sizeof(startup);
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdOutput = output.get();
  startup.hStdError = output.get();
  PROCESS_INFORMATION process{};
  if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, folder.c_str(), &startup,
                      &process))
    return;
  m_process.reset(process.hProcess);
  CloseHandle(process.hThread);
}

HWND RunningPlayer::WaitForTitle(const std::string& text) const {
  constexpr int kLongestWaitMs = 60'000;
  constexpr int kPauseMs = 50;
  for (int waited = 0; waited < kLongestWaitMs; waited += kPauseMs) {
    HWND window = FindWindowA("nivral_player", nullptr);
    char title[256] = "";
    GetWindowTextA(window, title, sizeof(title));
    if (std::string(title).find(text) != std::string::npos) return window;
    if (WaitForSingleObject(m_process.get(), kPauseMs) != WAIT_TIMEOUT) return nullptr;
  }
  return nullptr;
}

PlayerRun RunningPlayer::Wait() {
  if (!m_process) return {ERROR_PROC_NOT_FOUND, "the player did not start"};
  if (WaitForSingleObject(m_process.get(), kLongestRunMs) != WAIT_OBJECT_0)
    TerminateProcess(m_process.get(), ERROR_TIMEOUT);
  WaitForSingleObject(m_process.get(), INFINITE);
  DWORD exitCode = 0;
  GetExitCodeProcess(m_process.get(), &exitCode);
  PlayerRun run{exitCode, TextOf(m_outputPath)};
  DeleteFileA(m_outputPath.c_str());
  return run;
}

PlayerRun RunPlayerProgram(const std::string& arguments) {
  return RunningPlayer(arguments).Wait();
}
