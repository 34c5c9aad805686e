// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

/// A font file's path, as long as Windows lets one be.
using FontFile = char[260];

/// The font file for on-screen text in a folder: the first that `exists` confirms, else the last on the list
/// unasked.
void ChooseFontFile(FontFile& file, const char* folder, bool (*exists)(const char* path));

/// Fonts in the folder of `path` to be tried when it cannot be opened: those that Windows has had since version
/// 7 or longer, the ones with Chinese letters first. False when there is none at `index`.
bool FallbackFontFile(FontFile& file, const char* path, size_t index);
