// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <string>

/// What a run of nivral_player.exe, which lies beside the test, left behind.
struct PlayerRun {
  DWORD exitCode;
  std::string output;  ///< standard output and error, line ends as \n
};

/// A file in the temporary folder for this process; whatever was there is gone.
std::string FreshFile(const char* name);

/// Runs the player to its end, or kills it after a minute, which gives the exit code 1460.
PlayerRun RunPlayerProgram(const std::string& arguments);
