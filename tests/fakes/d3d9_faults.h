// SPDX-License-Identifier: MIT
// What a test asks of the d3d9.dll of this folder, and what that saw.
#pragma once

#include <windows.h>

struct D3D9Faults {
  // Results to give instead of asking the real run-time; 0 forwards the call.
  bool noDirect3D;
  HRESULT createDevice;
  HRESULT createSurface;
  HRESULT createTexture;
  HRESULT cooperativeLevel;
  HRESULT reset;

  // What was asked.
  HWND lastWindow;  ///< of the last device wanted
  bool lastWindowExisted;
  int devicesMade;
  int resets;
  int presents;

  // References: objects whose count has not come down to zero.
  int direct3DsAlive;
  int devicesAlive;
  int mostDevicesAlive;
};

using GetD3D9FaultsFunction = D3D9Faults* (*)();
