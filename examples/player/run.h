// SPDX-License-Identifier: MIT
#pragma once

#include "player/options.h"

/// Shows what the options ask for, prints the figures and returns the process's exit code. Throws MediaError
/// and std::runtime_error.
int RunPlayer(const Options& options);
