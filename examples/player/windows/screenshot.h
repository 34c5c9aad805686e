// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <string>

/// Writes a PNG of a window's client area with everything that lies over it, as it is seen on the screen.
/// Throws std::runtime_error.
void SaveScreenshot(HWND window, const std::string& path);
