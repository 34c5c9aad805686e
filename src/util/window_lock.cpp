// SPDX-License-Identifier: MIT
#include "util/window_lock.h"

namespace libnivral {
namespace {
constexpr DWORD kPollMs = 1;
constexpr int kMaxYieldMs = 20;
}  // namespace

bool IsWindowThread(HWND window) {
  return window && GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId();
}

bool IsHandlingSentMessage() {
  return InSendMessageEx(nullptr) != ISMEX_NOSEND;
}

void WindowLock::Lock(Wait wait) {
  if (wait == Wait::AnsweringMessages) {
    LockAnsweringMessages();
  } else {
    m_lock.Lock();
  }
}

void WindowLock::LockAnsweringMessages() {
  if (m_lock.TryLockNow()) return;
  m_windowThreadsWaiting.fetch_add(1, std::memory_order_relaxed);
  while (!m_lock.TryLockNow()) {
    MSG message;
    // Peeking for sent messages only delivers them and leaves the queue alone.
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
    MsgWaitForMultipleObjects(0, nullptr, FALSE, kPollMs, QS_SENDMESSAGE);
  }
  m_windowThreadsWaiting.fetch_sub(1, std::memory_order_relaxed);
}

void WindowLock::YieldToWindowThread() const {
  for (int i = 0; i < kMaxYieldMs && m_windowThreadsWaiting.load(std::memory_order_relaxed) > 0; ++i)
    Sleep(1);
}

}  // namespace libnivral
