// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "player/media/frame.h"

/// Writes a frame without overlays as a 24-bit BMP file, by its UTF-8 path; false when that fails.
bool SaveSnapshot(const Frame& frame, const std::string& path);

/// A new file in the user's folder for pictures.
std::string NewSnapshotPath();
