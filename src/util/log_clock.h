// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// Milliseconds since the system was booted, wrapping. A system call; any thread.
uint32_t MillisecondsSinceBoot();
