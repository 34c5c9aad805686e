// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>

/// The file of the font that the system draws its own dialogs with, wherever it keeps it; empty when it gives
/// none away. Read once and kept.
std::span<const uint8_t> SystemFontFile();
