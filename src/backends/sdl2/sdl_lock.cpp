// SPDX-License-Identifier: MIT
#include "backends/sdl2/sdl_lock.h"

#include <utility>

#include "util/thread_local_value.h"

namespace libnivral {
namespace {

/// Turns that this thread is in, on any pane.
ThreadLocalValue<int> g_turns;
WindowLock g_windowList;

bool MustNotWait() {
  return g_turns.Get() > 0 || IsHandlingSentMessage();
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

bool PaneLock::Enter(Wait wait) {
  if (MustNotWait()) return TryEnterWithWindowList();
  m_lock.Lock(wait);
  Begin(false);
  return true;
}

bool PaneLock::TryEnter() {
  if (MustNotWait()) return TryEnterWithWindowList();
  if (!m_lock.TryLockNow()) return false;
  Begin(false);
  return true;
}

/// With the list, nothing has to be waited for later in the turn either.
bool PaneLock::TryEnterWithWindowList() {
  if (!SdlWindowList().TryLockNow()) return false;
  if (m_lock.TryLockNow()) {
    if (!m_inTurn) {
      Begin(true);
      return true;
    }
    m_lock.Unlock();
  }
  SdlWindowList().Unlock();
  return false;
}

void PaneLock::Begin(bool withWindowList) {
  m_inTurn = true;
  m_withWindowList = withWindowList;
  g_turns.Set(g_turns.Get() + 1);
}

void PaneLock::Leave() {
  g_turns.Set(g_turns.Get() - 1);
  m_inTurn = false;
  const bool withWindowList = m_withWindowList;
  m_lock.Unlock();
  if (withWindowList) SdlWindowList().Unlock();
}

}  // namespace libnivral
