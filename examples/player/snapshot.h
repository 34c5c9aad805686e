// SPDX-License-Identifier: MIT
#pragma once

#include "picture.h"

/// Writes a frame as a BMP file through the displayer behind a handle. The displayer's result does not tell
/// whether the file was written; look for the file.
void SaveSnapshot(void* handle, Picture& picture, const char* path);
