// SPDX-License-Identifier: MIT
// libnivral.dll, loaded by hand: a program linked to it would not even start where a DLL is missing, and
// could not say which one.
#pragma once

#include <stdexcept>

#include "nivral/nivral.h"
#include "player/options.h"

/// The text is one line for the user.
struct MissingLibrary : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// clang-format off
#define PLAYER_FUNCTIONS(X) \
  X(InitializeEx) X(UnInitialize) X(DWOpenDrawEx) X(DWCloseDraw) X(DWSetHwnd) X(DWInitDraw) X(DWDrawYUV420) \
  X(DWAdjustedWnd) X(DWSetZoom) X(DWSetMirrorMode) X(DWSetPause) X(DWSetOSDText) X(DWSetMosaicFlag) \
  X(DWSetDisplayCB) X(DWSetMosaicLevel) X(DWSetMosaicAreaScale) X(DWSetAlgInfo) X(DWSetDsmAlgInfo) \
  X(SetColorParams) X(GetColorParamsRange) X(WVOpenWave) X(WVCloseWave) X(WVSetWaveFormat) \
  X(WVSetWriteWaveCB) X(WVPlayWave) X(WVPauseWave) X(WVStopWave) X(WVSetVolume) X(yv12_to_rgb24_c)
// clang-format on

/// The exports that the player calls, without their prefix.
struct NivralFunctions {
#define PLAYER_POINTER(name) decltype(&NIVRAL_##name) name;
  PLAYER_FUNCTIONS(PLAYER_POINTER)
#undef PLAYER_POINTER
};
extern NivralFunctions nivral;

/// Fills `nivral`; before anything else of the player runs. Throws MissingLibrary.
void LoadNivral();

/// The library's start-up and shut-down around all panes of one backend.
struct LibrarySession {
  explicit LibrarySession(Backend backend) { nivral.InitializeEx(backend == Backend::kSdl); }
  ~LibrarySession() { nivral.UnInitialize(); }
  LibrarySession(const LibrarySession&) = delete;
  LibrarySession& operator=(const LibrarySession&) = delete;
};
