// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <string>

#include "support/screen.h"
#include "util/win_handles.h"

/// What a run of the player left behind.
struct PlayerRun {
  DWORD exitCode;
  std::string output;  ///< standard output and error, line ends as \n
};

/// A file in the temporary folder for this process; whatever was there is gone.
std::string FreshFile(const char* name);

/// A run of nivral_player.exe from this test's folder, which is also its current one.
class RunningPlayer {
 public:
  explicit RunningPlayer(const std::string& arguments);

  /// Waits until the main window's title contains a text; null when it does not in a minute.
  HWND WaitForTitle(const std::string& text) const;
  /// Waits for the end, or kills the player after a minute, which gives the exit code 1460.
  PlayerRun Wait();

 private:
  std::string m_outputPath = FreshFile("output.txt");
  libnivral::UniqueThread m_process;
};

/// Runs the player to its end.
PlayerRun RunPlayerProgram(const std::string& arguments);

/// The pixels of a picture file, which is deleted; none of one that cannot be read.
ScreenShot TakePicture(const std::string& path);
