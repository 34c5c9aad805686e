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
  CMutexLock m_lock;  ///< held for notes only
  Batch m_batch;
  std::atomic<bool> m_any{false};
};

/// The lock of one pane. Its holder calls SDL and graphics drivers, which send messages to windows. A thread
/// that handles a message sent by another one, or is called back by SDL in the middle of a turn, therefore
/// never waits for it: it would wait for a thread that waits for it.
class PaneLock {
 public:
  /// Whether the calling thread may work on the pane now. False only for a thread that must not wait.
  bool Enter(Wait wait);

  /// Enters unless the pane is busy.
  bool TryEnter();
  void Leave();

  /// For the last turn of all, which has to take place.
  AutoWindowLock EnterForGood(Wait wait) { return AutoWindowLock(m_lock, wait); }

  void LetWindowThreadGoFirst() const { m_lock.LetWindowThreadGoFirst(); }

 private:
  bool TryEnterWithWindowList();
  void Begin(bool withWindowList);

  WindowLock m_lock;
  bool m_inTurn = false;
  bool m_withWindowList = false;
};

}  // namespace libnivral
