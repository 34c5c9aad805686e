// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <cstddef>

#include "backends/sdl2/sdl_objects.h"

namespace libnivral {

/// Posted to a pane's window to have its hook called on the window's thread; wParam is the pane.
UINT RedrawMessage();

/// Stands before SDL in the chain of a client window's procedures. SDL answers some messages from what it
/// believes about windows of its own making: one that it did not make would lose its client area or its
/// freedom to change size. Those messages go past SDL to the client.
///
/// One hook a window, made and removed on any thread, not by two at once.
class WindowHook {
 public:
  using OnRedraw = void (*)(HWND window, WPARAM pane);

  /// `client`: the window's procedure before SDL took its place.
  WindowHook(HWND window, WNDPROC client, OnRedraw onRedraw);

  /// When SDL has already let go of the window.
  ~WindowHook() { Retire(false); }
  WindowHook(const WindowHook&) = delete;
  WindowHook& operator=(const WindowHook&) = delete;

  /// Destroys SDL's window and leaves the client's procedures as they were before the pane, with those that
  /// the client has put on top since.
  void RemoveWith(SdlWindow& sdlWindow);

 private:
  void Retire(bool staysInChain);

  HWND m_window;
  size_t m_level;
};

/// The procedure that messages to `window` reach first.
WNDPROC WindowProcedure(HWND window);

}  // namespace libnivral
