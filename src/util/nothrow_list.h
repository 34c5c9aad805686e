// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

namespace libnivral {

/// A growing array of plain values that never throws: what there is no memory for is left out. Threads that
/// draw use it, where throwing for want of memory would itself want memory.
template <class T>
class NothrowList {
  static_assert(std::is_trivially_copyable_v<T>);

 public:
  bool push_back(const T& value) {
    if (m_size == m_capacity && !Grow(std::max<size_t>(2 * m_capacity, 16))) return false;
    m_values[m_size++] = value;
    return true;
  }

  /// All of them or, without the memory, none.
  bool append(const T* values, size_t count) {
    if (count > m_capacity - m_size && !Grow(std::max(2 * m_capacity, m_size + count))) return false;
    std::copy_n(values, count, m_values.get() + m_size);
    m_size += count;
    return true;
  }

  /// New values are not set.
  bool resize(size_t size) {
    if (size > m_capacity && !Grow(size)) return false;
    m_size = size;
    return true;
  }

  void clear() { m_size = 0; }

  bool empty() const { return m_size == 0; }
  size_t size() const { return m_size; }
  T* data() { return m_values.get(); }
  const T* data() const { return m_values.get(); }
  T* begin() { return data(); }
  T* end() { return data() + m_size; }
  const T* begin() const { return data(); }
  const T* end() const { return data() + m_size; }
  T& back() { return m_values[m_size - 1]; }
  const T& back() const { return m_values[m_size - 1]; }
  const T& operator[](size_t at) const { return m_values[at]; }

 private:
  bool Grow(size_t capacity) {
    std::unique_ptr<T[]> larger(new (std::nothrow) T[capacity]);
    if (!larger) return false;
    std::copy_n(m_values.get(), m_size, larger.get());
    m_values = std::move(larger);
    m_capacity = capacity;
    return true;
  }

  std::unique_ptr<T[]> m_values;
  size_t m_size = 0;
  size_t m_capacity = 0;
};

}  // namespace libnivral
