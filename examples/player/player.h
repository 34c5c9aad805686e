// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <vector>

#include "player/colour_window.h"
#include "player/main_window.h"
#include "player/options.h"
#include "player/pane_grid.h"
#include "player/sound.h"

/// The program: what the command line, menus and keys ask for, from start to end.
class Player : public MainEvents {
 public:
  /// Opens all files and panes. Throws MediaError and std::runtime_error.
  explicit Player(const Options& options);
  ~Player() override;

  /// Plays until the clips, the time or the user's patience ends, prints the figures and returns the exit
  /// code. Throws MediaError and std::runtime_error.
  int Run();

  void OnCommand(Command command) override;
  void OnArrange() override { m_grid.Arrange(); }
  void OnRaise() override;
  void OnMenu(HMENU menu) override;

 private:
  bool DoPanes(Command command);
  bool DoPlayback(Command command);
  bool DoOverlay(Command command);
  void Toggle(std::atomic<bool>& overlay);
  void OpenFiles();
  void OpenSounds(const Options& options);
  void SetCells(int cells);
  void SetPaused(bool paused);
  void ChangeVolume(int step);
  void SaveSnapshot();
  void ShowColours();
  void ShowFigures();
  void Pump(DWORD ms);
  void KeepPictures();
  void WaitForDraws(const DrawThread& thread);
  View& Chosen() { return m_grid.ViewAt(m_grid.Selected()); }

  Options m_options;
  OverlaySwitches m_switches;
  MainWindow m_window;
  ColourWindow m_colours;
  PaneGrid m_grid;
  std::vector<std::unique_ptr<Sound>> m_sounds;
  bool m_paused;
  bool m_wantsToEnd = false;
  Figures m_lastFigures;
  ULONGLONG m_lastFiguresAt = 0;
};
