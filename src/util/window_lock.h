// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <atomic>

#include "util/mutex_lock.h"

/// A CMutexLock that guards objects bound to a window. Its holder may call into graphics drivers, which send
/// messages to the window; the window's own thread therefore keeps answering them while it waits for the
/// lock.
class WindowLock {
 public:
  /// Takes the lock on any thread. `window` is the window whose thread must keep answering; it may be null or
  /// gone.
  void Lock(HWND window);
  void Unlock() { m_lock.Unlock(); }

  /// For a thread that takes the lock over and over, and does not hold it now: gives a waiting window thread,
  /// which can only poll, some milliseconds to get in.
  void LetWindowThreadGoFirst() const;

 private:
  void LockAnsweringMessages();

  CMutexLock m_lock;
  std::atomic<int> m_windowThreadsWaiting{0};
};

/// Holds a WindowLock for a scope.
class AutoWindowLock {
 public:
  AutoWindowLock(WindowLock& lock, HWND window) : m_lock(lock) { m_lock.Lock(window); }
  ~AutoWindowLock() { m_lock.Unlock(); }
  AutoWindowLock(const AutoWindowLock&) = delete;
  AutoWindowLock& operator=(const AutoWindowLock&) = delete;

 private:
  WindowLock& m_lock;
};

/// Whether the calling thread owns `window`.
bool IsWindowThread(HWND window);
