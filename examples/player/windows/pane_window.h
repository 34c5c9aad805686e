// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <vector>

#include "player/windows/layout.h"

/// What the user does with a pane. Called on the window's thread; points are client pixels.
class PaneEvents {
 public:
  virtual ~PaneEvents() = default;
  virtual void OnSize() = 0;
  /// The pane's thread waits for it.
  virtual void OnNewVideoSize(int width, int height) = 0;
  virtual void OnSelect() = 0;
  virtual void OnWheel(int steps, POINT at) = 0;
  virtual void OnDrag(const RECT& area) = 0;
  virtual void OnDoubleClick() = 0;
  virtual void OnDrop(const std::vector<std::string>& paths) = 0;
};

/// A thin frame over the panes, while a rectangle is drawn with the mouse.
class DragFrame {
 public:
  explicit DragFrame(HWND owner);
  ~DragFrame();
  DragFrame(const DragFrame&) = delete;
  DragFrame& operator=(const DragFrame&) = delete;

  /// An area of the screen.
  void Show(const RECT& area);

 private:
  HWND m_hwnd;
};

/// The window that a pane draws into, over a part of the main window.
class PaneWindow {
 public:
  /// Throws std::runtime_error.
  PaneWindow(HWND main, PixelSize picture);
  ~PaneWindow();
  PaneWindow(const PaneWindow&) = delete;
  PaneWindow& operator=(const PaneWindow&) = delete;

  /// `events` outlives the window or is taken away again with null.
  void SetEvents(PaneEvents* events) { m_events = events; }

  /// An area of the main window's client area.
  void Place(const PixelArea& area);
  void Hide();

  HWND Handle() const { return m_hwnd; }
  PixelSize Size() const;

 private:
  static LRESULT CALLBACK Procedure(HWND hwnd, UINT message, WPARAM wide, LPARAM packed);
  bool Handle(UINT message, WPARAM wide, LPARAM packed);
  RECT DraggedTo(POINT at) const;
  void EndDrag(POINT at);

  HWND m_hwnd = nullptr;
  PaneEvents* m_events = nullptr;
  bool m_dragging = false;
  POINT m_dragStart{};
  std::unique_ptr<DragFrame> m_frame;  ///< while the mouse draws a rectangle
};

/// Puts a window that the main window owns back over it.
void RaiseOwned(HWND window);
