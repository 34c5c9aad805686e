// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "player/options.h"
#include "player/pane_grid.h"
#include "player/playback.h"
#include "player/settings.h"
#include "player/windows/colour_panel.h"
#include "player/windows/main_window.h"
#include "player/windows/time_bar.h"

/// The program: what the command line, menus, keys and mouse ask for, from start to end.
class Player : public MainEvents, public ViewEvents {
 public:
  /// Opens all files and panes. Throws MediaError and std::runtime_error.
  explicit Player(const Options& options);
  ~Player() override;

  /// Plays until the user, the time or, if that is asked for, the clips end; prints the figures and what was
  /// wrong with the clips, and returns the exit code. Throws std::runtime_error.
  int Run();

  void OnCommand(Command command) override;
  void OnTick() override;
  void OnArrange() override;
  void OnRaise() override;
  void OnMenu(HMENU menu) override;
  void OnDrop(const std::vector<std::string>& paths) override;
  void OnSelect(size_t index) override;
  void OnDoubleClick() override { SetFullScreen(!m_window.IsFullScreen()); }

 private:
  bool DoPanes(Command command);
  bool DoPlayback(Command command);
  bool DoOverlay(Command command);
  void Toggle(std::atomic<bool>& overlay);
  void Open(const std::vector<std::string>& paths);
  void ShowMedia(Media media, nivral::Backend backend);
  void ChooseSound();
  std::string SoundPath() const;
  void SetCells(int cells);
  void SetFullScreen(bool full);
  void SaveSnapshot();
  void ShowColours();
  void ShowTime();
  void ShowFigures();
  void Note(std::string text);
  void Pump(DWORD ms);
  void KeepPictures();
  void WaitForDraws();
  void Remember();
  View& Chosen() { return m_grid.ViewAt(m_grid.Selected()); }

  Options m_options;
  Settings m_settings;
  OverlaySwitches m_switches;
  PlayClock m_clock;
  MainWindow m_window;
  TimeBar m_bar;
  ColourPanel m_colours;
  bool m_showsColours = false;
  PaneGrid m_grid;
  Playback m_playback;
  std::string m_soundFile;          ///< of a file with nothing else
  std::string m_soundPath;          ///< what plays now
  std::vector<std::string> m_told;  ///< troubles that were noted already
  std::string m_note;
  ULONGLONG m_noteUntil = 0;
  bool m_wantsToEnd = false;
  Figures m_lastFigures;
  ULONGLONG m_lastFiguresAt = 0;
};
