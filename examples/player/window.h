// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

/// What the user does with a window. Called on the window's thread; points are client pixels.
class WindowEvents {
 public:
  virtual ~WindowEvents() = default;
  virtual void OnSize() {}
  virtual void OnKey(int virtualKey) { static_cast<void>(virtualKey); }
  virtual void OnWheel(int steps, POINT at) {
    static_cast<void>(steps);
    static_cast<void>(at);
  }
  virtual void OnDrag(const RECT& area) { static_cast<void>(area); }
  virtual void OnClose() {}
};

/// A visible top-level window that leaves its client area to a pane.
class Window {
 public:
  /// The client area gets the size given, or as much of it as the screen has room for, in proportion.
  /// Throws std::runtime_error.
  Window(const char* title, int left, int clientWidth, int clientHeight);
  ~Window();
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  /// `events` outlives the window or is taken away again with null.
  void SetEvents(WindowEvents* events) { m_events = events; }

  HWND Handle() const { return m_hwnd; }
  RECT Frame() const;
  SIZE ClientSize() const;

 private:
  static LRESULT CALLBACK Procedure(HWND hwnd, UINT message, WPARAM wide, LPARAM packed);
  bool Handle(UINT message, WPARAM wide, LPARAM packed);
  void EndDrag(POINT at);

  HWND m_hwnd = nullptr;
  WindowEvents* m_events = nullptr;
  bool m_dragging = false;
  POINT m_dragStart{};
};

/// Handles the messages that are waiting or arrive within `ms` milliseconds.
void PumpMessages(DWORD ms);
