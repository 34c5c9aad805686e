// SPDX-License-Identifier: MIT
#include "backends/sdl2/sdl_library.h"

void StartSdl() {
}

void StopSdl() {
}
