// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <thread>

#include "display/base_displayer.h"
#include "support/frames.h"
#include "support/screen.h"
#include "support/test_window.h"
#include "support/wait.h"

/// A pane on a window of its own, used through the exports from the window's thread.
class Pane {
 public:
  Pane(uint32_t type, int width, int height, int x = 40, int y = 60, DWORD style = WS_OVERLAPPEDWINDOW);
  ~Pane() { NIVRAL_DWCloseDraw(handle); }
  Pane(const Pane&) = delete;
  Pane& operator=(const Pane&) = delete;

  uint32_t Init(int width, int height) {
    return NIVRAL_DWInitDraw(handle, static_cast<uint32_t>(width), static_cast<uint32_t>(height), 0);
  }
  void Start(int width, int height);  ///< Init and Settle
  /// Frames of that size until one stays on the screen: a new or resized window is erased late, over what was drawn.
  void Settle(int width, int height);
  uint32_t Draw(TestFrame& frame, int64_t param2 = 0);
  uint32_t DrawView(const FrameView& planes, int64_t param2 = 0);
  /// Draws once and waits until that frame is on the screen, by which luma its corners have; the frame's chroma
  /// has to be 128 there. `lighter` is what the pane's brightness adds.
  ScreenShot Show(TestFrame& frame, int lighter = 0);

  /// A driver-assistance record of one box.
  void SetBox(float left, float top, float right, float bottom, uint16_t type, uint16_t distance,
              uint16_t width);

  HWND Window() const { return window.Handle(); }
  template <class Displayer>
  Displayer& As() {
    return *static_cast<Displayer*>(static_cast<BaseDisplayer*>(handle));
  }

  bool bottomUp = false;  ///< whether frames are handed over from the last row in memory on
  static inline void (*opened)(void* handle) = nullptr;  ///< called with every new pane, if set
  TestWindow window;
  void* handle = nullptr;
  bool limitedRange = true;  ///< how Start saw luma taken; Wine's YV12 surfaces take it as of full range

 private:
  Rgb Corner() const;
  bool ShowsMark(int luma, bool limited) const;
  int m_mark = 24, m_width = 0, m_height = 0;  ///< of the frame that is waited for
};

/// Feeds a pane from a thread of its own, flat out.
class Feeder {
 public:
  Feeder(Pane& pane, TestFrame frame);
  ~Feeder() { Stop(); }
  /// Handles messages until the thread has ended: on its way out it may still ask the window something.
  void Stop();

  std::atomic<int> shown{0};  ///< frames that were taken

 private:
  std::atomic<bool> m_stop{false}, m_ended{false};
  std::jthread m_thread;
};

constexpr int kMark = 8;  ///< side of the squares in a shown frame's corners

/// Whether a pixel of a screen shot may belong to the mark of a frame shown one to one.
inline bool InMark(const ScreenShot& shot, int x, int y) {
  return (x < kMark || x >= shot.Width() - kMark) && (y < kMark || y >= shot.Height() - kMark);
}
