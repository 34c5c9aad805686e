// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <utility>

#if defined(_WIN32)
#include <windows.h>
#else
#include <sys/mman.h>
#endif

/// Bytes that end where a page begins that must not be touched; also before the first byte's page there is
/// one. A read or write outside faults, in code of any kind.
class GuardedBuffer {
 public:
  explicit GuardedBuffer(size_t size, uint8_t fill = 0) : m_size(size) {
    m_pages = (size + kPage - 1) / kPage * kPage;
    m_base = Allocate(m_pages + 2 * kPage);
    Open(m_base + kPage, m_pages);
    for (uint8_t& byte : *this)
      byte = fill;
  }
  GuardedBuffer(GuardedBuffer&& other) noexcept
      : m_base(std::exchange(other.m_base, nullptr)), m_pages(other.m_pages), m_size(other.m_size) {}
  GuardedBuffer& operator=(GuardedBuffer&&) = delete;
  ~GuardedBuffer() {
    if (m_base) Free(m_base, m_pages + 2 * kPage);
  }

  uint8_t* data() const { return m_base + kPage + m_pages - m_size; }
  size_t size() const { return m_size; }
  uint8_t* begin() const { return data(); }
  uint8_t* end() const { return data() + m_size; }
  uint8_t& operator[](size_t i) const { return data()[i]; }

 private:
  static constexpr size_t kPage = 4096;

#if defined(_WIN32)
  static uint8_t* Allocate(size_t bytes) {
    return static_cast<uint8_t*>(Checked(VirtualAlloc(nullptr, bytes, MEM_RESERVE, PAGE_NOACCESS)));
  }
  static void Open(uint8_t* start, size_t bytes) {
    if (bytes) Checked(VirtualAlloc(start, bytes, MEM_COMMIT, PAGE_READWRITE));
  }
  static void Free(uint8_t* start, size_t) {
    VirtualFree(start, 0, MEM_RELEASE);
  }
#else
  static uint8_t* Allocate(size_t bytes) {
    void* const memory = mmap(nullptr, bytes, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return static_cast<uint8_t*>(Checked(memory == MAP_FAILED ? nullptr : memory));
  }
  static void Open(uint8_t* start, size_t bytes) {
    if (bytes && mprotect(start, bytes, PROT_READ | PROT_WRITE) != 0) std::abort();
  }
  static void Free(uint8_t* start, size_t bytes) {
    munmap(start, bytes);
  }
#endif

  static void* Checked(void* memory) {
    if (!memory) std::abort();
    return memory;
  }

  uint8_t* m_base;
  size_t m_pages;
  size_t m_size;
};
