// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <string>
#include <vector>

/// Lets the user choose clips and sounds; nothing when it is cancelled.
std::vector<std::string> AskForFiles(HWND main);
