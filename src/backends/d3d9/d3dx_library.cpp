// SPDX-License-Identifier: MIT
#include "backends/d3d9/d3dx_library.h"

#include "util/mutex_lock.h"

namespace libnivral {
namespace {

template <class Function>
bool Find(HMODULE module, const char* name, Function& function) {
  function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
  return function != nullptr;
}

bool FindAll(D3dxFunctions& found) {
  HMODULE module = LoadLibraryA("d3dx9_43.dll");
  return module && Find(module, "D3DXCreateFontA", found.createFont) &&
         Find(module, "D3DXCreateLine", found.createLine) &&
         Find(module, "D3DXCompileShaderFromFileA", found.compileShaderFromFile);
}

CMutexLock g_lock;
D3dxFunctions g_functions{};
bool g_found = false;

}  // namespace

const D3dxFunctions* LoadD3dx() {
  CAutoLock guard(&g_lock);
  if (!g_found) g_found = FindAll(g_functions);
  return g_found ? &g_functions : nullptr;
}

}  // namespace libnivral
