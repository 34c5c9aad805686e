// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <atomic>

#include "util/mutex_lock.h"

namespace libnivral {

/// Whether the calling thread owns `window`, which may be null or gone.
bool IsWindowThread(HWND window);

/// Whether the calling thread is handling a message that another thread has sent and waits for. Such a thread
/// must not wait for a lock: whoever holds it may be that sender.
bool IsHandlingSentMessage();

/// How a thread waits for a lock.
enum class Wait {
  Plainly,
  AnsweringMessages  ///< messages that other threads send to windows of this one are handled meanwhile
};

/// A CMutexLock that guards objects bound to a window. Its holder may call into graphics drivers, which send
/// messages to the window; the thread that owns the window therefore has to answer them while it waits.
class WindowLock {
 public:
  void Lock(Wait wait);
  bool TryLockNow() { return m_lock.TryLockNow(); }
  void Unlock() { m_lock.Unlock(); }

  /// For a thread that takes the lock over and over, and does not hold it now: gives a waiting window thread,
  /// which can only poll, some milliseconds to get in.
  void YieldToWindowThread() const;

 private:
  void LockAnsweringMessages();

  CMutexLock m_lock;
  std::atomic<int> m_windowThreadsWaiting{0};
};

/// Holds a WindowLock for a scope.
class AutoWindowLock {
 public:
  AutoWindowLock(WindowLock& lock, Wait wait) : m_lock(lock) { m_lock.Lock(wait); }
  ~AutoWindowLock() { m_lock.Unlock(); }
  AutoWindowLock(const AutoWindowLock&) = delete;
  AutoWindowLock& operator=(const AutoWindowLock&) = delete;

 private:
  WindowLock& m_lock;
};

}  // namespace libnivral
