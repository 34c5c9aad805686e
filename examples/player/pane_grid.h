// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <vector>

#include "player/channel.h"
#include "player/view.h"
#include "player/windows/main_window.h"

/// All panes of the main window, and the library's session that they live in. Window thread.
class PaneGrid {
 public:
  /// Everything given outlives the grid.
  PaneGrid(MainWindow& window, OverlaySwitches& switches, const PlayClock& clock, ViewEvents& events);
  ~PaneGrid() { Close(); }

  /// Shows other channels, one cell each.
  void Open(std::deque<Channel> channels, nivral::Backend backend);
  /// A further channel, on the backend of the others.
  void Add(Channel channel);
  /// Closes all panes and opens them again on another backend.
  void SetBackend(nivral::Backend backend);
  /// Shows `cells` panes at a time, those around the chosen one.
  void SetCells(int cells) { m_cells = cells; }
  /// Puts the panes where they belong in a part of the main window.
  void Arrange(const PixelArea& room);
  /// Whether a picture has got another shape since.
  bool IsOutOfPlace() const;
  /// Puts them back over the main window.
  void Raise();
  void Select(size_t index) { m_selected = index; }
  void Refresh();

  nivral::Backend CurrentBackend() const { return m_backend; }
  int Cells() const { return m_cells; }
  size_t Count() const { return m_views.size(); }
  size_t Selected() const { return m_selected; }
  View& ViewAt(size_t index) { return *m_views[index]; }
  const Channel& ChannelAt(size_t index) const { return m_channels[index]; }
  bool IsVisible(size_t index) const;
  int VisiblePanes() const;

  /// Whether all panes show the place of the clock's last jump.
  bool HaveFollowed(uint64_t jump) const;
  /// Whether none of the clips in sight has a further frame.
  bool HaveEnded() const;
  /// Of the longest clip; 0: there is none.
  double Length() const;
  /// A line for each clip with which something was wrong.
  std::vector<std::string> Troubles() const;
  /// Of all panes since the start.
  Figures Result() const;

 private:
  void Close();
  void OpenView(size_t index);

  MainWindow& m_window;
  OverlaySwitches& m_switches;
  const PlayClock& m_clock;
  ViewEvents& m_events;
  nivral::Backend m_backend = nivral::Backend::kSdl2;
  int m_cells = 1;
  size_t m_selected = 0;
  std::deque<Channel> m_channels;
  std::optional<nivral::Library> m_session;
  std::vector<std::unique_ptr<View>> m_views;
  Figures m_closed;  ///< of panes that are gone
};
