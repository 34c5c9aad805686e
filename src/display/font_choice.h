// SPDX-License-Identifier: MIT
#pragma once

#include <string>

/// The font file for on-screen text in a folder: the first that `exists` confirms, else the last on the list
/// unasked.
std::string ChooseFontFile(const std::string& folder, bool (*exists)(const char* path));
