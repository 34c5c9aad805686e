// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

/// The font file for on-screen text in a folder: the first that `exists` confirms, else the last on the list
/// unasked.
std::string ChooseFontFile(const std::string& folder, bool (*exists)(const char* path));

/// Fonts in the folder of `path` to be tried when it cannot be opened: those that Windows has had since version
/// 7 or longer, the ones with Chinese letters first.
std::vector<std::string> FallbackFontFiles(const std::string& path);
