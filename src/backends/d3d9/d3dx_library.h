// SPDX-License-Identifier: MIT
// The few D3DX functions in use, found at run time: a fresh Windows has no D3DX, and the library must load
// there all the same. (Delay loading is no way out: MinGW's thunks lose float arguments on the first call.)
#pragma once

#include <d3dx9.h>

namespace libnivral {

struct D3dxFunctions {
  decltype(&D3DXCreateFontA) createFont;
  decltype(&D3DXCreateLine) createLine;
  decltype(&D3DXCompileShaderFromFileA) compileShaderFromFile;
};

/// Loads d3dx9_43.dll, which stays loaded, and returns its functions; null when any is missing. Later calls
/// try again only after a failure. Any thread.
const D3dxFunctions* LoadD3dx();

}  // namespace libnivral
