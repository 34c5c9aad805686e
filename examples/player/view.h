// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include "player/channel.h"
#include "player/embed/draw_thread.h"
#include "player/embed/pane.h"
#include "player/embed/picture_control.h"
#include "player/windows/pane_window.h"

/// Called on the window's thread.
class ViewEvents {
 public:
  virtual ~ViewEvents() = default;
  virtual void OnSelect(size_t index) = 0;
  virtual void OnDoubleClick() = 0;
  virtual void OnDrop(const std::vector<std::string>& paths) = 0;
};

/// A channel on the screen: window, pane and drawing thread on one backend. Members are released in the order
/// that the library wants: the thread ends, then the pane closes, then the window goes.
class View : public PaneEvents {
 public:
  /// The thread starts with `Start`. Everything given outlives the view.
  View(HWND main, Channel& channel, nivral::Backend backend, const OverlaySwitches& switches,
       const PlayClock& clock, ViewEvents& events, size_t index);
  ~View() override;

  /// The place of the picture inside a cell of the main window.
  PixelArea PlaceIn(const PixelArea& cell);
  /// Whether the picture has another shape than when it was placed.
  bool IsOutOfPlace() const;
  void Raise() { RaiseOwned(m_window.Handle()); }
  void Hide();

  DrawThread& Thread() { return m_thread; }
  const DrawThread& Thread() const { return m_thread; }
  PictureControl& Control() { return m_control; }

  void OnSize() override;
  void OnNewVideoSize(int width, int height) override { m_pane.SetSize(width, height); }
  void OnSelect() override { m_events.OnSelect(m_index); }
  void OnWheel(int steps, POINT at) override;
  void OnDrag(const RECT& area) override;
  void OnDoubleClick() override { m_events.OnDoubleClick(); }
  void OnDrop(const std::vector<std::string>& paths) override { m_events.OnDrop(paths); }

 private:
  PixelSize PictureSize() const;

  Channel& m_channel;
  ViewEvents& m_events;
  size_t m_index;
  PixelSize m_placed{};
  std::unique_ptr<Overlays> m_overlays;
  PaneWindow m_window;
  Pane m_pane;
  PictureControl m_control;
  DrawThread m_thread;
};
