// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

/// A function of a DLL, loaded if need be; null when it has none of that name.
template <class Function>
Function LoadedFunction(const char* dll, const char* name) {
  return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(LoadLibraryA(dll), name)));
}
