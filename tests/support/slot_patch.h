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
