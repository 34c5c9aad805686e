// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "picture.h"

/// Writes a frame as a 24-bit BMP file; false when that fails.
bool SaveSnapshot(const Picture& picture, const std::string& path);
