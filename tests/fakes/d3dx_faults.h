// SPDX-License-Identifier: MIT
// What a test asks of the d3dx9_43.dll of this folder.
#pragma once

struct D3dxFaults {
  void (*onDrawText)();  ///< called by every drawing or measuring of a text, before it
};

using GetD3dxFaultsFunction = D3dxFaults* (*)();
