// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

/// Another address in a table of functions, until the end of its scope. Patches of one slot nest.
class SlotPatch {
 public:
  SlotPatch(ULONG_PTR* slot, ULONG_PTR replacement) : m_slot(slot), m_original(*slot) { Write(replacement); }
  ~SlotPatch() { Write(m_original); }
  SlotPatch(const SlotPatch&) = delete;
  SlotPatch& operator=(const SlotPatch&) = delete;

 private:
  void Write(ULONG_PTR value) {
    DWORD protection = 0;
    VirtualProtect(m_slot, sizeof(*m_slot), PAGE_READWRITE, &protection);
    *m_slot = value;
    VirtualProtect(m_slot, sizeof(*m_slot), protection, &protection);
  }

  ULONG_PTR* m_slot;
  ULONG_PTR m_original;
};

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
