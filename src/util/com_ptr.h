// SPDX-License-Identifier: MIT
#pragma once

#include <cassert>
#include <utility>

namespace libnivral {

/// Owns one reference of a COM object. Move-only: a second owner has to ask for a reference of its own.
template <class T>
class ComPtr {
 public:
  ComPtr() = default;
  /// Adopts the caller's reference; none is added.
  explicit ComPtr(T* adopted) : m_pointer(adopted) {}
  ComPtr(ComPtr&& other) noexcept : m_pointer(other.detach()) {}
  ComPtr& operator=(ComPtr&& other) noexcept {
    if (this != &other) reset(other.detach());
    return *this;
  }
  ~ComPtr() { reset(); }

  T* get() const { return m_pointer; }
  T* operator->() const {
    assert(m_pointer);
    return m_pointer;
  }
  explicit operator bool() const { return m_pointer != nullptr; }

  /// Where a creating call stores the object. The owner has to be empty, or its object would leak.
  T** put() {
    assert(!m_pointer);
    return &m_pointer;
  }
  void** put_void() { return reinterpret_cast<void**>(put()); }

  /// Releases the object and adopts the caller's reference to another one, or none.
  void reset(T* adopted = nullptr) {
    T* const old = std::exchange(m_pointer, adopted);
    if (old) old->Release();
  }

  /// Hands the reference over to the caller.
  [[nodiscard]] T* detach() { return std::exchange(m_pointer, nullptr); }

 private:
  T* m_pointer = nullptr;
};

}  // namespace libnivral
