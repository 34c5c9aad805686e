// SPDX-License-Identifier: MIT
#include "player_process.h"

// GDI+ wants COM's types, which windows.h leaves out when it is lean, and min and max.
#include <objidl.h>

#include <algorithm>
namespace Gdiplus {
using std::max;
using std::min;
}  // namespace Gdiplus
#include <gdiplus.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "support/wait.h"

namespace {

std::string TextOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::string text{std::istreambuf_iterator<char>(file), {}};
  std::erase(text, '\r');
  return text;
}

HANDLE OpenOutput(const std::string& path) {
  SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
  return CreateFileA(path.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                     CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
}

std::string ProgramFolder() {
  char path[MAX_PATH] = "";
  GetModuleFileNameA(nullptr, path, sizeof(path));
  const std::string self = path;
  return self.substr(0, self.find_last_of('\\') + 1);
}

}  // namespace

std::string FreshFile(const char* name) {
  const auto own = std::to_string(GetCurrentProcessId()).append("-").append(name);
  const std::filesystem::path path = std::filesystem::temp_directory_path() / own;
  // Wine's desktop starts with the first player and keeps the output that it inherits.
  std::error_code isInUse;
  std::filesystem::remove(path, isInUse);
  return path.string();
}

RunningPlayer::RunningPlayer(const std::string& arguments) {
  const std::string folder = ProgramFolder();
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
  HWND window = nullptr;
  WaitUntil([&] {
    window = FindWindowA("nivral_player", nullptr);
    char title[256] = "";
    GetWindowTextA(window, title, sizeof(title));
    if (std::string(title).find(text) != std::string::npos) return true;
    window = nullptr;
    return WaitForSingleObject(m_process.get(), 20) != WAIT_TIMEOUT;
  });
  return window;
}

PlayerRun RunningPlayer::Wait() {
  if (!m_process) return {ERROR_PROC_NOT_FOUND, "the player did not start"};
  if (WaitForSingleObject(m_process.get(), 60000) != WAIT_OBJECT_0)
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

ScreenShot TakePicture(const std::string& path) {
  ULONG_PTR token = 0;
  const Gdiplus::GdiplusStartupInput input;
  Gdiplus::GdiplusStartup(&token, &input, nullptr);
  std::vector<uint32_t> pixels;
  int width = 0, height = 0;
  {
    Gdiplus::Bitmap bitmap(std::wstring(path.begin(), path.end()).c_str());
    width = static_cast<int>(bitmap.GetWidth()), height = static_cast<int>(bitmap.GetHeight());
    for (int at = 0; at < width * height; ++at) {
      Gdiplus::Color colour;
      bitmap.GetPixel(at % width, at / width, &colour);
      pixels.push_back(colour.GetValue());
    }
  }
  Gdiplus::GdiplusShutdown(token);
  DeleteFileA(path.c_str());
  return {width, height, std::move(pixels)};
}
