// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

/// Holds a slim lock for a scope. Neither taking nor making such a lock can fail or needs memory; it must
/// not be taken twice.
class SrwGuard {
 public:
  explicit SrwGuard(SRWLOCK& lock) : m_lock(lock) { AcquireSRWLockExclusive(&m_lock); }
  ~SrwGuard() { ReleaseSRWLockExclusive(&m_lock); }
  SrwGuard(const SrwGuard&) = delete;
  SrwGuard& operator=(const SrwGuard&) = delete;

 private:
  SRWLOCK& m_lock;
};
