// SPDX-License-Identifier: MIT
// What the user can ask for by menu or key.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "player/options.h"

enum Command : WORD {
  kCommandOpen = 100,
  kCommandSnapshot,
  kCommandExit,
  kCommandOnePane,
  kCommandFourPanes,
  kCommandNinePanes,
  kCommandSixteenPanes,
  kCommandNextPane,
  kCommandMirror,
  kCommandZoomIn,
  kCommandZoomOut,
  kCommandSdl,
  kCommandDirect3D,
  kCommandDirectDraw,
  kCommandColours,
  kCommandNeutral,
  kCommandBrighter,
  kCommandDarker,
  kCommandMoreContrast,
  kCommandLessContrast,
  kCommandMoreSaturation,
  kCommandLessSaturation,
  kCommandHueForward,
  kCommandHueBack,
  kCommandTexts,
  kCommandMosaic,
  kCommandCoarserMosaic,
  kCommandFinerMosaic,
  kCommandAssistance,
  kCommandMonitoring,
  kCommandPause,
  kCommandNextFrame,
  kCommandPreviousFrame,
  kCommandOn,
  kCommandBack,
  kCommandToStart,
  kCommandToEnd,
  kCommandFaster,
  kCommandSlower,
  kCommandUsualSpeed,
  kCommandRepeat,
  kCommandLouder,
  kCommandQuieter,
  kCommandFullScreen,
  kCommandEscape,
  kCommandKeyList,
  kCommandFirstRecent,  ///< and those after it
};

/// What the menu shows as chosen.
struct MenuState {
  int panes;
  Backend backend;
  bool mirror;
  bool mosaic;
  bool texts;
  bool assistance;
  bool monitoring;
  bool paused;
  bool repeat;
  bool fullScreen;
  bool colours;
};

/// The menu bar; it belongs to the window that it is given to.
HMENU MakeMenu();
void UpdateMenu(HMENU menu, const MenuState& state);
/// The files opened last, at the end of the first menu.
void ShowRecentFiles(HMENU bar, const std::vector<std::string>& paths);

/// The keys of all commands. Lives as long as the process.
HACCEL CommandKeys();
