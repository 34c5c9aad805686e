// SPDX-License-Identifier: MIT
#include "player_process.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include "util/win_handles.h"

namespace {

constexpr DWORD kLongestRunMs = 60'000;

std::string PlayerPath() {
  char path[MAX_PATH] = "";
  GetModuleFileNameA(nullptr, path, sizeof(path));
  const std::string self = path;
  return self.substr(0, self.find_last_of('\\') + 1) + "nivral_player.exe";
}

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

PlayerRun RunPlayerProgram(const std::string& arguments) {
  const std::string outputPath = FreshFile("output.txt");
  std::string command = "\"" + PlayerPath() + "\" " + arguments;
  PROCESS_INFORMATION process{};
  {
    const UniqueFile output(OpenOutput(outputPath));
    STARTUPINFOA startup{};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = output.get();
    startup.hStdError = output.get();
    if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                        &process))
      return {GetLastError(), "the player did not start"};
  }
  const UniqueThread running(process.hProcess), thread(process.hThread);
  if (WaitForSingleObject(running.get(), kLongestRunMs) != WAIT_OBJECT_0)
    TerminateProcess(running.get(), ERROR_TIMEOUT);
  WaitForSingleObject(running.get(), INFINITE);
  DWORD exitCode = 0;
  GetExitCodeProcess(running.get(), &exitCode);
  PlayerRun run{exitCode, TextOf(outputPath)};
  DeleteFileA(outputPath.c_str());
  return run;
}
