// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include "player/channel.h"
#include "player/draw_thread.h"
#include "player/pane.h"
#include "player/pane_window.h"
#include "player/picture_control.h"

/// A channel on the screen: window, pane and drawing thread on one backend. Members are released in the order
/// that the library wants: the thread ends, then the pane closes, then the window goes.
class View : public PaneEvents {
 public:
  /// The thread starts with `Start`. The channel and the switches outlive the view.
  View(HWND main, Channel& channel, Backend backend, const OverlaySwitches& switches, DrawThread::Plan plan,
       std::function<void()> onSelect);
  ~View() override;

  /// The place of the picture inside a cell of the main window.
  PixelArea PlaceIn(const PixelArea& cell);
  void Raise() { RaiseOwned(m_window.Handle()); }
  void Hide();

  DrawThread& Thread() { return m_thread; }
  const DrawThread& Thread() const { return m_thread; }
  PictureControl& Control() { return m_control; }

  void OnSize() override;
  void OnSelect() override { m_onSelect(); }
  void OnWheel(int steps, POINT at) override;
  void OnDrag(const RECT& area) override;

 private:
  PixelSize m_picture;
  std::function<void()> m_onSelect;
  std::unique_ptr<Overlays> m_overlays;
  PaneWindow m_window;
  Pane m_pane;
  PictureControl m_control;
  DrawThread m_thread;
};
