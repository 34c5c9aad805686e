// SPDX-License-Identifier: MIT
#include "player/commands.h"

#include <span>

namespace {

/// Without text: a line between groups.
struct Item {
  const char* text;
  Command command;
};
constexpr Item kLine{nullptr, Command{}};

constexpr Item kFile[] = {{"&Open...\tCtrl+O", kCommandOpen},
                          {"&Snapshot\tN", kCommandSnapshot},
                          kLine,
                          {"E&xit\tEsc", kCommandExit}};
constexpr Item kView[] = {{"&1 pane\t1", kCommandOnePane},
                          {"&4 panes\t4", kCommandFourPanes},
                          {"&9 panes\t9", kCommandNinePanes},
                          {"1&6 panes\t6", kCommandSixteenPanes},
                          {"&Next pane\tTab", kCommandNextPane},
                          kLine,
                          {"&Mirror\tM", kCommandMirror},
                          {"Zoom &in\tUp", kCommandZoomIn},
                          {"Zoom &out\tDown", kCommandZoomOut},
                          kLine,
                          {"&SDL2\tF2", kCommandSdl},
                          {"&Direct3D 9\tF3", kCommandDirect3D},
                          {"Direct&Draw\tF4", kCommandDirectDraw}};
constexpr Item kColour[] = {{"&Sliders...\tC", kCommandColours}, {"&Neutral\t0", kCommandNeutral}};
constexpr Item kOverlay[] = {{"&Texts\tT", kCommandTexts},
                             {"&Mosaic\tX", kCommandMosaic},
                             {"&Coarser mosaic\t+", kCommandCoarserMosaic},
                             {"&Finer mosaic\t-", kCommandFinerMosaic},
                             {"Driver &assistance\tB", kCommandAssistance},
                             {"&Driver monitoring\tL", kCommandMonitoring}};
constexpr Item kPlayback[] = {{"&Pause\tSpace", kCommandPause},
                              {"&Step\tRight", kCommandStep},
                              {"&Louder\tPgUp", kCommandLouder},
                              {"&Quieter\tPgDn", kCommandQuieter}};

struct Column {
  const char* title;
  std::span<const Item> items;
};
constexpr Column kColumns[] = {{"&File", kFile},
                               {"&View", kView},
                               {"&Colour", kColour},
                               {"&Overlay", kOverlay},
                               {"&Playback", kPlayback}};

ACCEL kKeys[] = {
    {FVIRTKEY | FCONTROL, 'O', kCommandOpen},
    {FVIRTKEY, 'N', kCommandSnapshot},
    {FVIRTKEY, VK_ESCAPE, kCommandExit},
    {FVIRTKEY, '1', kCommandOnePane},
    {FVIRTKEY, '4', kCommandFourPanes},
    {FVIRTKEY, '9', kCommandNinePanes},
    {FVIRTKEY, '6', kCommandSixteenPanes},
    {FVIRTKEY, VK_TAB, kCommandNextPane},
    {FVIRTKEY, 'M', kCommandMirror},
    {FVIRTKEY, VK_UP, kCommandZoomIn},
    {FVIRTKEY, VK_DOWN, kCommandZoomOut},
    {FVIRTKEY, VK_F2, kCommandSdl},
    {FVIRTKEY, VK_F3, kCommandDirect3D},
    {FVIRTKEY, VK_F4, kCommandDirectDraw},
    {FVIRTKEY, 'C', kCommandColours},
    {FVIRTKEY, '0', kCommandNeutral},
    {FVIRTKEY, 'Q', kCommandBrighter},
    {FVIRTKEY, 'A', kCommandDarker},
    {FVIRTKEY, 'W', kCommandMoreContrast},
    {FVIRTKEY, 'S', kCommandLessContrast},
    {FVIRTKEY, 'E', kCommandMoreSaturation},
    {FVIRTKEY, 'D', kCommandLessSaturation},
    {FVIRTKEY, 'R', kCommandHueForward},
    {FVIRTKEY, 'F', kCommandHueBack},
    {FVIRTKEY, 'T', kCommandTexts},
    {FVIRTKEY, 'X', kCommandMosaic},
    {FVIRTKEY, VK_OEM_PLUS, kCommandCoarserMosaic},
    {FVIRTKEY, VK_ADD, kCommandCoarserMosaic},
    {FVIRTKEY, VK_OEM_MINUS, kCommandFinerMosaic},
    {FVIRTKEY, VK_SUBTRACT, kCommandFinerMosaic},
    {FVIRTKEY, 'B', kCommandAssistance},
    {FVIRTKEY, 'L', kCommandMonitoring},
    {FVIRTKEY, VK_SPACE, kCommandPause},
    {FVIRTKEY, VK_RIGHT, kCommandStep},
    {FVIRTKEY, VK_PRIOR, kCommandLouder},
    {FVIRTKEY, VK_NEXT, kCommandQuieter},
};

void Choose(HMENU menu, Command first, Command last, UINT chosen) {
  for (UINT command = first; command <= last; ++command)
    CheckMenuItem(menu, command, command == chosen ? MF_CHECKED : MF_UNCHECKED);
}

UINT LayoutCommand(int panes) {
  switch (panes) {
    case 1:
      return kCommandOnePane;
    case 4:
      return kCommandFourPanes;
    case 9:
      return kCommandNinePanes;
    case 16:
      return kCommandSixteenPanes;
    default:
      return 0;
  }
}

}  // namespace

HMENU MakeMenu() {
  HMENU bar = CreateMenu();
  for (const Column& column : kColumns) {
    HMENU popup = CreatePopupMenu();
    for (const Item& item : column.items)
      AppendMenuA(popup, item.text ? MF_STRING : MF_SEPARATOR, item.command, item.text);
    AppendMenuA(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(popup), column.title);
  }
  return bar;
}

void UpdateMenu(HMENU menu, const MenuState& state) {
  const auto check = [menu](Command command, bool on) {
    CheckMenuItem(menu, command, on ? MF_CHECKED : MF_UNCHECKED);
  };
  Choose(menu, kCommandOnePane, kCommandSixteenPanes, LayoutCommand(state.panes));
  Choose(menu, kCommandSdl, kCommandDirectDraw, kCommandSdl + static_cast<UINT>(state.backend));
  check(kCommandMirror, state.mirror);
  check(kCommandMosaic, state.mosaic);
  check(kCommandTexts, state.texts);
  check(kCommandAssistance, state.assistance);
  check(kCommandMonitoring, state.monitoring);
  check(kCommandPause, state.paused);
  // The other backends have no zoom.
  const UINT zoom = state.backend == Backend::kDirect3D ? MF_ENABLED : MF_GRAYED;
  EnableMenuItem(menu, kCommandZoomIn, zoom);
  EnableMenuItem(menu, kCommandZoomOut, zoom);
}

HACCEL CommandKeys() {
  static HACCEL keys = CreateAcceleratorTableA(kKeys, static_cast<int>(std::size(kKeys)));
  return keys;
}
