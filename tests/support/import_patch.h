// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

/// Puts another function in the place of one that a module imports from a DLL, until the end of its scope.
/// For faults no real device gives, and for watching what is passed to the system. Patches of the same
/// function nest.
class ImportPatch {
 public:
  /// `importer` is this exe unless told.
  template <class Function>
  ImportPatch(const char* dll, const char* name, Function* replacement,
              HMODULE importer = GetModuleHandleW(nullptr))
      : ImportPatch(dll, name, reinterpret_cast<ULONG_PTR>(replacement), importer) {}
  ~ImportPatch();
  ImportPatch(const ImportPatch&) = delete;
  ImportPatch& operator=(const ImportPatch&) = delete;

 private:
  ImportPatch(const char* dll, const char* name, ULONG_PTR replacement, HMODULE importer);

  ULONG_PTR* m_slot;
  ULONG_PTR m_original;
};

/// The DLL's own function, whether or not the import is patched.
template <class Function>
Function* RealFunction(const char* dll, const char* name) {
  return reinterpret_cast<Function*>(reinterpret_cast<ULONG_PTR>(GetProcAddress(LoadLibraryA(dll), name)));
}
