// SPDX-License-Identifier: MIT
// Which fonts texts are drawn with.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace libnivral {

/// A font file's path, as long as Windows lets one be.
using FontFile = char[260];

/// The font file for on-screen text in a folder: the first that `exists` confirms, else the last on the list
/// unasked.
void ChooseFontFile(FontFile& file, const char* folder, bool (*exists)(const char* path));

/// Fonts in the folder of `path` to be tried when it cannot be opened: those that Windows has had since
/// version 7 or longer, the ones with Chinese letters first. False when there is none at `index`.
bool FallbackFontFile(FontFile& file, const char* path, size_t index);

/// The font file that on-screen text is drawn with, in the ANSI code page. Found at the first call and kept
/// for the life of the process; any thread may call. The file need not exist.
const char* FontPath();

/// The file of the font that the system draws its own dialogs with, wherever it keeps it; empty when it gives
/// none away. Read once and kept.
std::span<const uint8_t> SystemFontFile();

/// A face's name, as long as Windows lets one be.
using FontFace = char[32];

/// The face of the system's icon titles, for text while the client has asked for no other; "Tahoma" when the
/// system does not tell.
void IconTitleFace(FontFace& face);

}  // namespace libnivral
