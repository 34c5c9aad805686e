// SPDX-License-Identifier: MIT
#pragma once

/// The font file that on-screen text is drawn with, in the ANSI code page. Found at the first call and kept
/// for the life of the process; any thread may call. The file need not exist.
const char* FontPath();
