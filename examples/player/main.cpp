// SPDX-License-Identifier: MIT
#include <windows.h>

#include <shellapi.h>

#include <cstdio>

#include "media_error.h"
#include "player/player.h"
#include "player/windows/text.h"

namespace {

constexpr int kFailed = 1;
constexpr int kBadInput = 2;

/// A window program has no console of its own: what it prints goes where the caller wants it, else to the
/// console that it was started from.
bool ConnectOutput() {
  const auto isThere = [](DWORD which) {
    HANDLE output = GetStdHandle(which);
    return output && output != INVALID_HANDLE_VALUE && GetFileType(output) != FILE_TYPE_UNKNOWN;
  };
  if (isThere(STD_OUTPUT_HANDLE) || isThere(STD_ERROR_HANDLE)) return true;
  if (!AttachConsole(ATTACH_PARENT_PROCESS)) return false;
  return std::freopen("CONOUT$", "w", stdout) && std::freopen("CONOUT$", "w", stderr);
}

void Say(bool hasOutput, std::FILE* stream, const std::string& text) {
  if (hasOutput)
    std::fprintf(stream, "%s\n", text.c_str());
  else
    MessageBoxW(nullptr, Wide(text).c_str(), L"libnivral player", MB_OK);
}

std::vector<std::string> Words() {
  int count = 0;
  LPWSTR* words = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> result;
  for (int i = 1; i < count; ++i)
    result.push_back(Utf8(words[i]));
  LocalFree(words);
  return result;
}

int Run() {
  const Options options = ParseOptions(Words());
  if (!options.help.empty()) {
    Say(ConnectOutput(), stdout, options.help);
    return 0;
  }
  if (!options.writeRecords.empty()) {
    WriteRoadRecords(options);
    return 0;
  }
  ConnectOutput();
  return Player(options).Run();
}

int Complain(const std::exception& error, int code) {
  Say(ConnectOutput(), stderr, std::string("nivral_player: error: ") + error.what());
  return code;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) {
  try {
    return Run();
  } catch (const OptionError& error) {
    return Complain(error, kBadInput);
  } catch (const MediaError& error) {
    return Complain(error, kBadInput);
  } catch (const std::exception& error) {
    return Complain(error, kFailed);
  }
}
