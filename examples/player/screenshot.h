// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <string>
#include <vector>

/// Writes a PNG of the client areas of `windows`, side by side, as they are seen on the screen. Throws
/// std::runtime_error.
void SaveScreenshot(const std::vector<HWND>& windows, const std::string& path);
