// SPDX-License-Identifier: MIT
#include "util/mutex_lock.h"

namespace libnivral {
namespace {
constexpr DWORD kSpinCount = 4000;
constexpr DWORD kRetryMs = 1000;
}  // namespace

CMutexLock::CMutexLock() {
  InitializeCriticalSectionAndSpinCount(&m_criticalSection, kSpinCount);
}

CMutexLock::~CMutexLock() {
  DeleteCriticalSection(&m_criticalSection);
}

void CMutexLock::Lock() {
  EnterCriticalSection(&m_criticalSection);
}

void CMutexLock::Unlock() {
  LeaveCriticalSection(&m_criticalSection);
}

bool CMutexLock::TryLockNow() {
  return TryEnterCriticalSection(&m_criticalSection) != FALSE;
}

bool CMutexLock::TryLock(DWORD seconds) {
  const DWORD start = GetTickCount();
  // 64 bits: a limit of more than 49 days must not wrap into a short one.
  const ULONGLONG limitMs = ULONGLONG{seconds} * 1000;
  for (;;) {
    if (TryLockNow()) return true;
    Sleep(kRetryMs);
    if (GetTickCount() - start >= limitMs) return false;
  }
}

CAutoLock::CAutoLock(CMutexLock* lock) : m_lock(lock) {
  if (m_lock) m_lock->Lock();
}

CAutoLock::~CAutoLock() {
  if (m_lock) m_lock->Unlock();
  m_lock = nullptr;
}

}  // namespace libnivral
