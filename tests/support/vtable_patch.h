// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

/// Puts another function in a slot of a COM object's table, until the end of its scope. Objects of one kind
/// share their table, so every one of them is affected.
class VtablePatch {
 public:
  template <class Interface, class Function>
  VtablePatch(Interface* object, int slot, Function* replacement)
      : m_slot(*reinterpret_cast<ULONG_PTR**>(object) + slot), m_original(*m_slot) {
    Write(reinterpret_cast<ULONG_PTR>(replacement));
  }
  ~VtablePatch() { Write(m_original); }
  VtablePatch(const VtablePatch&) = delete;
  VtablePatch& operator=(const VtablePatch&) = delete;

  template <class Function>
  Function* Original() const {
    return reinterpret_cast<Function*>(m_original);
  }

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
