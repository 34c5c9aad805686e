// SPDX-License-Identifier: MIT
#include "player/commands.h"

#include <span>

#include "player/windows/text.h"

namespace {

/// Without text: a line between groups.
struct Item {
  const wchar_t* text;
  Command command;
};
constexpr Item kLine{nullptr, Command{}};

constexpr Item kFile[] = {{L"&Open...\tCtrl+O", kCommandOpen},
                          {L"&Snapshot\tN", kCommandSnapshot},
                          {L"&Keys...\tF1", kCommandKeyList},
                          kLine,
                          {L"E&xit\tEsc", kCommandExit}};
constexpr Item kView[] = {{L"&1 pane\t1", kCommandOnePane},
                          {L"&4 panes\t4", kCommandFourPanes},
                          {L"&9 panes\t9", kCommandNinePanes},
                          {L"1&6 panes\t6", kCommandSixteenPanes},
                          {L"&Next pane\tTab", kCommandNextPane},
                          {L"&Full screen\tF11", kCommandFullScreen},
                          kLine,
                          {L"&Mirror\tM", kCommandMirror},
                          {L"Zoom &in\tUp", kCommandZoomIn},
                          {L"Zoom &out\tDown", kCommandZoomOut},
                          kLine,
                          {L"&SDL2\tF2", kCommandSdl},
                          {L"&Direct3D 9\tF3", kCommandDirect3D},
                          {L"Direct&Draw\tF4", kCommandDirectDraw}};
constexpr Item kColour[] = {{L"&Sliders\tC", kCommandColours}, {L"&Neutral\t0", kCommandNeutral}};
constexpr Item kOverlay[] = {{L"&Texts\tT", kCommandTexts},
                             {L"&Mosaic\tX", kCommandMosaic},
                             {L"&Coarser mosaic\t+", kCommandCoarserMosaic},
                             {L"&Finer mosaic\t-", kCommandFinerMosaic},
                             {L"Driver &assistance\tB", kCommandAssistance},
                             {L"&Driver monitoring\tL", kCommandMonitoring}};
constexpr Item kPlayback[] = {{L"&Pause\tSpace", kCommandPause},
                              {L"&Next frame\tRight", kCommandNextFrame},
                              {L"P&revious frame\tLeft", kCommandPreviousFrame},
                              {L"5 seconds &on\tCtrl+Right", kCommandOn},
                              {L"5 seconds &back\tCtrl+Left", kCommandBack},
                              {L"To the &start\tHome", kCommandToStart},
                              {L"To the &end\tEnd", kCommandToEnd},
                              kLine,
                              {L"&Faster\t]", kCommandFaster},
                              {L"S&lower\t[", kCommandSlower},
                              {L"&Usual speed\tBackspace", kCommandUsualSpeed},
                              {L"Repea&t\tP", kCommandRepeat},
                              kLine,
                              {L"Lo&uder\tPgUp", kCommandLouder},
                              {L"&Quieter\tPgDn", kCommandQuieter}};

struct Column {
  const wchar_t* title;
  std::span<const Item> items;
};
constexpr Column kColumns[] = {{L"&File", kFile},
                               {L"&View", kView},
                               {L"&Colour", kColour},
                               {L"&Overlay", kOverlay},
                               {L"&Playback", kPlayback}};

ACCEL kKeys[] = {
    {FVIRTKEY | FCONTROL, 'O', kCommandOpen},
    {FVIRTKEY, 'N', kCommandSnapshot},
    {FVIRTKEY, VK_ESCAPE, kCommandEscape},
    {FVIRTKEY, VK_F1, kCommandKeyList},
    {FVIRTKEY, VK_F11, kCommandFullScreen},
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
    // By what they write, wherever a keyboard has them.
    {0, '+', kCommandCoarserMosaic},
    {0, '-', kCommandFinerMosaic},
    {0, ']', kCommandFaster},
    {0, '[', kCommandSlower},
    {FVIRTKEY, 'B', kCommandAssistance},
    {FVIRTKEY, 'L', kCommandMonitoring},
    {FVIRTKEY, VK_SPACE, kCommandPause},
    {FVIRTKEY, VK_RIGHT, kCommandNextFrame},
    {FVIRTKEY, VK_LEFT, kCommandPreviousFrame},
    {FVIRTKEY | FCONTROL, VK_RIGHT, kCommandOn},
    {FVIRTKEY | FCONTROL, VK_LEFT, kCommandBack},
    {FVIRTKEY, VK_HOME, kCommandToStart},
    {FVIRTKEY, VK_END, kCommandToEnd},
    {FVIRTKEY, VK_BACK, kCommandUsualSpeed},
    {FVIRTKEY, 'P', kCommandRepeat},
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
      AppendMenuW(popup, item.text ? MF_STRING : MF_SEPARATOR, item.command, item.text);
    AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(popup), column.title);
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
  check(kCommandRepeat, state.repeat);
  check(kCommandFullScreen, state.fullScreen);
  check(kCommandColours, state.colours);
  // The other backends have no zoom.
  const UINT zoom = state.backend == Backend::kDirect3D ? MF_ENABLED : MF_GRAYED;
  EnableMenuItem(menu, kCommandZoomIn, zoom);
  EnableMenuItem(menu, kCommandZoomOut, zoom);
}

void ShowRecentFiles(HMENU bar, const std::vector<std::string>& paths) {
  HMENU file = GetSubMenu(bar, 0);
  while (GetMenuItemCount(file) > static_cast<int>(std::size(kFile)))
    DeleteMenu(file, std::size(kFile), MF_BYPOSITION);
  if (!paths.empty()) AppendMenuW(file, MF_SEPARATOR, 0, nullptr);
  UINT command = kCommandFirstRecent;
  for (const std::string& path : paths) {
    std::wstring text;
    for (const wchar_t letter : Wide(path))
      text += letter == L'&' ? L"&&" : std::wstring(1, letter);
    AppendMenuW(file, MF_STRING, command++, text.c_str());
  }
}

HACCEL CommandKeys() {
  static HACCEL keys = CreateAcceleratorTableW(kKeys, static_cast<int>(std::size(kKeys)));
  return keys;
}
