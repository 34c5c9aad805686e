// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

namespace libnivral {

/// A lock that its owner thread may take again.
class CMutexLock {
 public:
  CMutexLock();
  virtual ~CMutexLock();
  CMutexLock(const CMutexLock&) = delete;
  CMutexLock& operator=(const CMutexLock&) = delete;

  void Lock();
  void Unlock();

  /// Takes the lock if it is free or already this thread's; never waits.
  bool TryLockNow();

  /// Tries at once and then every second until at least `seconds` have passed since the first try, so a call
  /// that never gets the lock takes up to a second more. Returns whether the lock is held.
  bool TryLock(DWORD seconds);

 private:
  CRITICAL_SECTION m_criticalSection;
};

/// Holds a CMutexLock for a scope; a null lock is nothing to hold.
class CAutoLock {
 public:
  explicit CAutoLock(CMutexLock* lock);
  virtual ~CAutoLock();
  CAutoLock(const CAutoLock&) = delete;
  CAutoLock& operator=(const CAutoLock&) = delete;

 private:
  CMutexLock* m_lock;
};

}  // namespace libnivral
