// SPDX-License-Identifier: MIT
// new (std::nothrow) that really throws nothing. The run-time's own calls the throwing form and catches, and
// a thread's first exception needs memory itself: without any, the process would end in the very call that
// was to survive it. The run-time's delete gives the memory back with free.
#include <cstdlib>
#include <new>

void* operator new(size_t size, const std::nothrow_t&) noexcept {
  return std::malloc(size ? size : 1);
}

void* operator new[](size_t size, const std::nothrow_t&) noexcept {
  return std::malloc(size ? size : 1);
}
