// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <nivral/nivral.hpp>
#include <utility>
#include <vector>

#include "player/media/frame.h"

/// What a pane's drawing thread sends the window, with width and height, before a frame of another size.
constexpr UINT kNewVideoSize = WM_APP;

/// A display bound to a window. Made and destroyed on the window's thread.
class Pane {
 public:
  /// Throws std::runtime_error.
  Pane(nivral::Backend backend, HWND window, int width, int height);

  /// Any thread: runs a setter on the display. Calls on one Direct3D pane must not overlap, so there it is
  /// kept for the drawing thread and runs before its next frame; elsewhere it runs at once.
  template <class Setter>
  void Set(Setter setter) {
    if (m_backend == nivral::Backend::kDirect3D9)
      static_cast<void>(m_jobs.Add(std::move(setter)));
    else
      setter(m_display);
  }
  void SetMirror(nivral::Mirror mirror);
  nivral::Mirror Mirror() const { return m_mirror; }
  /// Around a point in per mille; only Direct3D does it.
  void SetZoom(uint32_t x, uint32_t y, uint32_t factor);
  bool IsZoomed() const { return m_isZoomed; }
  nivral::Backend Backend() const { return m_backend; }

  /// The window's thread, on `kNewVideoSize`.
  void SetSize(int width, int height);

  /// Drawing thread: the library's result for one frame, which may have another size than the one before.
  nivral::Result Draw(const Frame& frame);

  /// Drawing thread only.
  nivral::Display& Display() { return m_display; }

 private:
  void RemovePadding(nivral::Frame& frame);

  nivral::Backend m_backend;
  HWND m_window;
  int m_width;
  int m_height;
  std::atomic<nivral::Mirror> m_mirror{nivral::Mirror::kNone};
  std::atomic<bool> m_isZoomed{false};
  std::vector<uint8_t> m_packed;
  nivral::JobList m_jobs;
  nivral::Display m_display;
};
