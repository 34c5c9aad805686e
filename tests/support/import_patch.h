// SPDX-License-Identifier: MIT
#pragma once

#include "support/slot_patch.h"

/// The slot of a function that a module imports from a DLL; ends the process when it does not.
ULONG_PTR* ImportSlot(const char* dll, const char* name, HMODULE importer);

/// Puts another function in the place of one that a module imports from a DLL, until the end of its scope.
/// For faults no real device gives, and for watching what is passed to the system.
class ImportPatch : public SlotPatch {
 public:
  /// `importer` is this exe unless told.
  template <class Function>
  ImportPatch(const char* dll, const char* name, Function* replacement,
              HMODULE importer = GetModuleHandleW(nullptr))
      : SlotPatch(ImportSlot(dll, name, importer), reinterpret_cast<ULONG_PTR>(replacement)) {}
};

/// The DLL's own function, whether or not the import is patched.
template <class Function>
Function* RealFunction(const char* dll, const char* name) {
  return reinterpret_cast<Function*>(reinterpret_cast<ULONG_PTR>(GetProcAddress(LoadLibraryA(dll), name)));
}
