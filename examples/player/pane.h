// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <atomic>
#include <functional>
#include <mutex>
#include <vector>

#include "picture.h"
#include "player/library.h"
#include "player/options.h"

/// A display handle bound to a window. Made and destroyed on the window's thread.
class Pane {
 public:
  /// Throws std::runtime_error.
  Pane(Backend backend, HWND window, int width, int height);
  ~Pane();
  Pane(const Pane&) = delete;
  Pane& operator=(const Pane&) = delete;

  /// Any thread: runs a setter on the handle. Calls on one Direct3D pane must not overlap, so there it is
  /// kept for the drawing thread and runs before its next frame; elsewhere it runs at once.
  void Set(std::function<void(void* handle)> setter);

  /// Drawing thread: the library's result for one frame.
  uint32_t Draw(Picture& picture, int64_t frame);

  /// Whether a paused pane goes on showing the records it has. DirectDraw panes burn boxes into frames and
  /// let them expire.
  bool KeepsRecordsWhilePaused() const { return m_backend != Backend::kDirectDraw; }

  /// Drawing thread: whether the record of the frame to come should be sent. A DirectDraw pane takes one
  /// record for each frame that its worker composes, not for each that it is given; the others would pile up.
  bool WantsRecord();

  /// Drawing thread only.
  void* Handle() const { return m_handle; }

 private:
  static void NIVRAL_CALL CountComposed(int32_t index, void* dc, uint32_t width, uint32_t height,
                                        int64_t param2, int32_t clientWidth, int32_t clientHeight,
                                        uint32_t mirror, void* user);
  void RunKeptSetters();

  void* m_handle = nullptr;
  Backend m_backend;
  std::atomic<int> m_recordsAhead{0};  ///< sent, and their frames not composed yet
  std::mutex m_lock;
  std::vector<std::function<void(void*)>> m_kept;
};
