// SPDX-License-Identifier: MIT
// Who works on a pane when.
#pragma once

#include <windows.h>

#include <atomic>
#include <cstdint>
#include <optional>

#include "util/window_lock.h"

namespace libnivral {

struct VideoSize {
  int32_t width = 0;
  int32_t height = 0;

  bool operator==(const VideoSize&) const = default;
};

/// SDL's list of windows has no lock of its own. Whoever makes or destroys a window holds this one, and
/// whoever pushes an event from a drawing thread, since SDL's renderers look their window up in the list.
WindowLock& SdlWindowList();

/// What a pane was asked for by threads that found it busy and must not wait.
class PaneRequests {
 public:
  /// In the order in which they are to be done; a later request of a kind replaces an earlier one.
  struct Batch {
    bool free = false;
    std::optional<HWND> window;
    std::optional<VideoSize> size;
  };

  void RequestFree();
  void RequestWindow(HWND window);
  void RequestSize(VideoSize size);
  bool Any() const { return m_any; }
  Batch Take();

 private:
  CMutexLock m_lock;  ///< held for copies only
  Batch m_batch;
  std::atomic<bool> m_any{false};
};

/// The lock of one pane. Its holder calls SDL and graphics drivers, which send messages to windows. A thread
/// that handles a message sent by another one, or is called back by SDL while it works on a pane, therefore
/// never waits for it: it would wait for a thread that waits for it.
class PaneLock {
 public:
  /// Whether the calling thread may work on the pane now. False only for a thread that must not wait.
  bool Lock(Wait wait);

  /// The same, without waiting: false also for a busy pane.
  bool TryLock();
  void Unlock();

  /// For the end of the pane, which has to take place.
  AutoWindowLock LockForDestruction(Wait wait) { return AutoWindowLock(m_lock, wait); }

  void YieldToWindowThread() const { m_lock.YieldToWindowThread(); }

 private:
  bool TryLockWithWindowList();
  void Begin(bool withWindowList);

  WindowLock m_lock;
  bool m_locked = false;
  bool m_withWindowList = false;
};

}  // namespace libnivral
