// SPDX-License-Identifier: MIT
#include "backends/sdl2/sdl_lock.h"

#include <utility>

#include "util/thread_local_value.h"

namespace libnivral {
namespace {

/// How many locks of panes this thread holds.
ThreadLocalValue<int> g_panesLocked;
WindowLock g_windowList;

bool MustNotWait() {
  return g_panesLocked.Get() > 0 || IsHandlingSentMessage();
}

}  // namespace

WindowLock& SdlWindowList() {
  return g_windowList;
}

void PaneRequests::RequestFree() {
  CAutoLock guard(&m_lock);
  m_batch.free = true;
  m_batch.size.reset();
  m_any = true;
}

void PaneRequests::RequestWindow(HWND window) {
  CAutoLock guard(&m_lock);
  m_batch.window = window;
  m_any = true;
}

void PaneRequests::RequestSize(VideoSize size) {
  CAutoLock guard(&m_lock);
  m_batch.size = size;
  m_any = true;
}

PaneRequests::Batch PaneRequests::Take() {
  CAutoLock guard(&m_lock);
  m_any = false;
  return std::exchange(m_batch, {});
}

bool PaneLock::Lock(Wait wait) {
  if (MustNotWait()) return TryLockWithWindowList();
  m_lock.Lock(wait);
  Begin(false);
  return true;
}

bool PaneLock::TryLock() {
  if (MustNotWait()) return TryLockWithWindowList();
  if (!m_lock.TryLockNow()) return false;
  Begin(false);
  return true;
}

/// With the list, nothing has to be waited for later, while the pane is locked, either.
bool PaneLock::TryLockWithWindowList() {
  if (!SdlWindowList().TryLockNow()) return false;
  if (m_lock.TryLockNow()) {
    if (!m_locked) {
      Begin(true);
      return true;
    }
    m_lock.Unlock();
  }
  SdlWindowList().Unlock();
  return false;
}

void PaneLock::Begin(bool withWindowList) {
  m_locked = true;
  m_withWindowList = withWindowList;
  g_panesLocked.Set(g_panesLocked.Get() + 1);
}

void PaneLock::Unlock() {
  g_panesLocked.Set(g_panesLocked.Get() - 1);
  m_locked = false;
  const bool withWindowList = m_withWindowList;
  m_lock.Unlock();
  if (withWindowList) SdlWindowList().Unlock();
}

}  // namespace libnivral
