// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace libnivral {

/// Starts SDL's timer and video for the whole process, with the library's event filter, and SDL_ttf. A
/// failure is silent: panes then fail to bind. Does nothing while SDL runs.
void StartSdl();

/// Shuts SDL_ttf and SDL down. Panes still open are not touched.
void StopSdl();

/// Changes with every StopSdl. Objects of SDL and SDL_ttf that were made in an earlier run are gone with it
/// and must not be handed back.
uint32_t SdlRun();

}  // namespace libnivral
