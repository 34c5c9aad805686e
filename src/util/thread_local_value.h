// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <cstdint>
#include <type_traits>

namespace libnivral {

/// A value that each thread has for itself, zero at first. thread_local would be emulated by some compilers,
/// which takes memory at a thread's first use and ends the process where there is none. A global object: each
/// is one of the few slots of the process.
template <class T>
class ThreadLocalValue {
  static_assert(std::is_integral_v<T> || std::is_pointer_v<T>);

 public:
  ThreadLocalValue() : m_slot(TlsAlloc()) {}
  ~ThreadLocalValue() { TlsFree(m_slot); }
  ThreadLocalValue(const ThreadLocalValue&) = delete;
  ThreadLocalValue& operator=(const ThreadLocalValue&) = delete;

  T Get() const {
    const auto bits = reinterpret_cast<intptr_t>(TlsGetValue(m_slot));
    if constexpr (std::is_pointer_v<T>)
      return reinterpret_cast<T>(bits);
    else
      return static_cast<T>(bits);
  }
  void Set(T value) {
    if constexpr (std::is_pointer_v<T>)
      TlsSetValue(m_slot, value);
    else
      TlsSetValue(m_slot, reinterpret_cast<void*>(static_cast<intptr_t>(value)));
  }

 private:
  DWORD m_slot;
};

}  // namespace libnivral
