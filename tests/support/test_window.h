// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

/// A visible top-level window whose client area is the video pane of a test. Belongs to the thread that makes
/// it, which must pump.
class TestWindow {
 public:
  /// Places the client area at (x, y) on the screen.
  TestWindow(int width, int height, int x = 40, int y = 60, DWORD style = WS_OVERLAPPEDWINDOW);
  ~TestWindow();
  TestWindow(const TestWindow&) = delete;
  TestWindow& operator=(const TestWindow&) = delete;

  HWND Handle() const { return m_hwnd; }
  void ResizeClient(int width, int height);
  void Destroy();

 private:
  HWND m_hwnd;
};

/// Handles the messages that are waiting, and those of the next `ms` milliseconds.
void Pump(DWORD ms = 0);
