// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

/// What the player remembers from one run to the next, in the user's part of the registry.
struct Settings {
  int volume = 60;  ///< percent
  bool repeat = false;
  std::optional<WINDOWPLACEMENT> placement;
  std::vector<std::string> recent;  ///< the file opened last comes first

  void AddRecent(const std::string& path);
};

Settings LoadSettings();
void SaveSettings(const Settings& settings);
