// SPDX-License-Identifier: MIT
#pragma once

/// Starts SDL's timer and video for the whole process, with the library's event filter, and SDL_ttf. A
/// failure is silent: panes then fail to bind. Safe to call again.
void StartSdl();

/// Shuts SDL_ttf and SDL down. Panes still open are not touched.
void StopSdl();
