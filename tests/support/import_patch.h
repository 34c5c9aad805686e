// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

/// Puts another function in the place of one that this exe imports from a DLL, until the end of its scope.
/// For faults no real device gives, and for watching what is passed to the system. Patches of the same
/// function nest.
class ImportPatch {
 public:
  template <class Function>
  ImportPatch(const char* dll, const char* name, Function* replacement)
      : ImportPatch(dll, name, reinterpret_cast<ULONG_PTR>(replacement)) {}
  ~ImportPatch();
  ImportPatch(const ImportPatch&) = delete;
  ImportPatch& operator=(const ImportPatch&) = delete;

 private:
  ImportPatch(const char* dll, const char* name, ULONG_PTR replacement);

  ULONG_PTR* m_slot;
  ULONG_PTR m_original;
};

/// The DLL's own function, whether or not the import is patched.
template <class Function>
Function* RealFunction(const char* dll, const char* name) {
  return reinterpret_cast<Function*>(reinterpret_cast<ULONG_PTR>(GetProcAddress(LoadLibraryA(dll), name)));
}
