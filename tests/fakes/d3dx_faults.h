// SPDX-License-Identifier: MIT
// What a test asks of the d3dx9_43.dll of this folder.
#pragma once

#include <windows.h>

struct D3dxFaults {
  // Results to give instead of doing it; 0 does it.
  HRESULT createFont;
  HRESULT createLine;
  HRESULT drawText;
  HRESULT drawLine;

  void (*onDrawText)();  ///< called by every drawing or measuring of a text, before it
};

using GetD3dxFaultsFunction = D3dxFaults* (*)();
