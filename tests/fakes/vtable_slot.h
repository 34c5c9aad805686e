// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

/// Replaces one function of a COM object's class and remembers the original. The table is shared by all
/// objects of the class, so later objects have the replacement already.
template <class Function>
class VtableSlot {
 public:
  VtableSlot(size_t index, Function replacement) : m_index(index), m_replacement(replacement) {}

  void Patch(void* object) {
    Function* slot = *static_cast<Function**>(object) + m_index;
    if (*slot == m_replacement) return;
    DWORD protection = 0;
    VirtualProtect(slot, sizeof(*slot), PAGE_READWRITE, &protection);
    m_original = *slot;
    *slot = m_replacement;
    VirtualProtect(slot, sizeof(*slot), protection, &protection);
  }

  template <class... Arguments>
  auto Forward(Arguments... arguments) const {
    return m_original(arguments...);
  }

 private:
  size_t m_index;
  Function m_replacement;
  Function m_original = nullptr;
};
