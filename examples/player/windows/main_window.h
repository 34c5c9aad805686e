// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "player/commands.h"
#include "player/windows/layout.h"

/// Called on the window's thread.
class MainEvents {
 public:
  virtual ~MainEvents() = default;
  virtual void OnCommand(Command command) = 0;
  /// Every few milliseconds, also while a menu or a dialog is open or the window is dragged.
  virtual void OnTick() = 0;
  /// The window was moved or has a new size.
  virtual void OnArrange() = 0;
  /// The window may have been raised over its panes.
  virtual void OnRaise() = 0;
  virtual void OnMenu(HMENU menu) = 0;
  virtual void OnDrop(const std::vector<std::string>& paths) = 0;
};

/// The player's frame: title, menu, and a dark client area that panes lie over.
class MainWindow {
 public:
  /// Throws std::runtime_error.
  MainWindow();
  ~MainWindow();
  MainWindow(const MainWindow&) = delete;
  MainWindow& operator=(const MainWindow&) = delete;

  /// `events` outlives the window or is taken away again with null.
  void SetEvents(MainEvents* events) { m_events = events; }
  void StartTicks();

  /// Shows a client area of this size, or as much of it as the screen has room for, in proportion.
  void Show(PixelSize client);
  /// Shows the window where it was when Placement told so, if a screen is there.
  void Show(const WINDOWPLACEMENT& placement);
  WINDOWPLACEMENT Placement() const;

  /// The whole screen without title and menu, and back.
  void SetFullScreen(bool full);
  bool IsFullScreen() const { return m_isFullScreen; }

  void SetTitle(const std::string& title);
  /// A frame around the chosen pane; an area without width: none.
  void Mark(const PixelArea& area);

  HWND Handle() const { return m_hwnd; }
  PixelSize Size() const;

 private:
  static LRESULT CALLBACK Procedure(HWND hwnd, UINT message, WPARAM wide, LPARAM packed);
  bool Handle(UINT message, WPARAM wide, LPARAM packed);
  void OnTimer(UINT_PTR timer);
  void Paint() const;
  void PassWheelOn(WPARAM wide, LPARAM packed) const;

  HWND m_hwnd = nullptr;
  HMENU m_menu = nullptr;
  MainEvents* m_events = nullptr;
  RECT m_mark{};
  bool m_isMenuOpen = false;
  bool m_isFullScreen = false;
  WINDOWPLACEMENT m_beforeFullScreen{};
};

/// The files of a WM_DROPFILES message, which it ends.
std::vector<std::string> DroppedFiles(WPARAM wide);

/// Handles the messages that are waiting or arrive within `ms` milliseconds, except those that `takes` takes.
void PumpMessages(DWORD ms, const std::function<bool(MSG&)>& takes);
