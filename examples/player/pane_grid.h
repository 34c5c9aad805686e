// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "player/channel.h"
#include "player/library.h"
#include "player/main_window.h"
#include "player/view.h"

/// All panes of the main window, and the library's session that they live in. Window thread.
class PaneGrid {
 public:
  /// `plan` is that of every pane; its hold is what the panes begin with. `onSelect` is called when another
  /// pane is chosen. Everything given outlives the grid.
  PaneGrid(MainWindow& window, OverlaySwitches& switches, DrawThread::Plan plan,
           std::function<void()> onSelect);
  ~PaneGrid() { Close(); }

  /// Shows other channels, one cell each. Only the first channel's end counts for the plan's onRewind.
  void Open(std::deque<Channel> channels, Backend backend);
  /// A further channel, on the backend of the others.
  void Add(Channel channel);
  /// Closes all panes and opens them again on another backend.
  void SetBackend(Backend backend);
  /// Shows `cells` panes at a time, those around the chosen one.
  void SetCells(int cells);
  /// Puts the panes where they belong in the main window.
  void Arrange();
  /// Puts them back over the main window.
  void Raise();
  void Select(size_t index);

  void Hold(bool hold);
  void Step();
  void RefreshOverlays();

  Backend CurrentBackend() const { return m_backend; }
  int Cells() const { return m_cells; }
  size_t Count() const { return m_views.size(); }
  size_t Selected() const { return m_selected; }
  View& ViewAt(size_t index) { return *m_views[index]; }
  Channel& ChannelAt(size_t index) { return m_channels[index]; }
  int VisiblePanes() const;

  /// Whether there are clips and all have ended, or one has failed.
  bool IsFinished() const;
  /// Ends all threads; throws MediaError for a clip that has failed.
  void Finish();
  /// Of all panes since the start.
  Figures Result() const;

 private:
  void Close();
  void OpenView(size_t index);
  bool IsVisible(size_t index) const;

  MainWindow& m_window;
  OverlaySwitches& m_switches;
  DrawThread::Plan m_plan;
  std::function<void()> m_onSelect;
  Backend m_backend = Backend::kSdl;
  int m_cells = 1;
  size_t m_selected = 0;
  std::deque<Channel> m_channels;
  std::optional<LibrarySession> m_session;
  std::vector<std::unique_ptr<View>> m_views;
  Figures m_closed;  ///< of panes that are gone
};
