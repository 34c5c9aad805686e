// SPDX-License-Identifier: MIT
// What the player does for each command.
#include "media_error.h"
#include "player/player.h"
#include "player/windows/open_dialog.h"
#include "player/windows/snapshot.h"
#include "player/windows/text.h"

void Player::OnCommand(Command command) {
  if (DoPanes(command) || DoPlayback(command) || DoOverlay(command)) return;
  if (command >= kCommandFirstRecent && command < kCommandFirstRecent + m_settings.recent.size())
    return Open({m_settings.recent[command - kCommandFirstRecent]});
  switch (command) {
    case kCommandOpen:
      return Open(AskForFiles(m_window.Handle()));
    case kCommandSnapshot:
      return SaveSnapshot();
    case kCommandKeyList:
      MessageBoxW(m_window.Handle(), Wide(kKeyList).c_str(), L"Keys", MB_OK);
      return;
    case kCommandEscape:
      if (m_window.IsFullScreen()) return SetFullScreen(false);
      [[fallthrough]];
    case kCommandExit:
      m_wantsToEnd = true;
      return;
    case kCommandFullScreen:
      return SetFullScreen(!m_window.IsFullScreen());
    case kCommandColours:
      m_showsColours = !m_showsColours;
      return OnArrange();
    default:
      Chosen().Control().Do(command);
      Chosen().Thread().Refresh();
      ShowColours();
  }
}

bool Player::DoPanes(Command command) {
  switch (command) {
    case kCommandOnePane:
      SetCells(1);
      return true;
    case kCommandFourPanes:
      SetCells(4);
      return true;
    case kCommandNinePanes:
      SetCells(9);
      return true;
    case kCommandSixteenPanes:
      SetCells(16);
      return true;
    case kCommandNextPane:
      OnSelect((m_grid.Selected() + 1) % m_grid.Count());
      return true;
    case kCommandSdl:
    case kCommandDirect3D:
    case kCommandDirectDraw:
      m_grid.SetBackend(static_cast<nivral::Backend>(command - kCommandSdl));
      OnArrange();
      return true;
    default:
      return false;
  }
}

bool Player::DoPlayback(Command command) {
  constexpr int kVolumeStep = 10;
  constexpr double kLeap = 5;
  switch (command) {
    case kCommandPause:
      m_playback.SetPaused(!m_playback.IsPaused());
      return true;
    case kCommandNextFrame:
      m_playback.Step(1);
      return true;
    case kCommandPreviousFrame:
      m_playback.Step(-1);
      return true;
    case kCommandOn:
      m_playback.SeekTo(m_playback.Position() + kLeap);
      return true;
    case kCommandBack:
      m_playback.SeekTo(m_playback.Position() - kLeap);
      return true;
    case kCommandToStart:
      m_playback.SeekTo(0);
      return true;
    case kCommandToEnd:
      if (m_playback.Length() > 0) m_playback.SeekTo(m_playback.Length());
      return true;
    case kCommandFaster:
      m_playback.SetSpeed(m_playback.Speed() * 2);
      return true;
    case kCommandSlower:
      m_playback.SetSpeed(m_playback.Speed() / 2);
      return true;
    case kCommandUsualSpeed:
      m_playback.SetSpeed(1);
      return true;
    case kCommandRepeat:
      m_playback.SetRepeat(!m_playback.Repeats());
      return true;
    case kCommandLouder:
      m_playback.SetVolume(m_playback.Volume() + kVolumeStep);
      return true;
    case kCommandQuieter:
      m_playback.SetVolume(m_playback.Volume() - kVolumeStep);
      return true;
    default:
      return false;
  }
}

bool Player::DoOverlay(Command command) {
  switch (command) {
    case kCommandTexts:
      Toggle(m_switches.texts);
      return true;
    case kCommandAssistance:
      Toggle(m_switches.assistance);
      return true;
    case kCommandMonitoring:
      Toggle(m_switches.monitoring);
      return true;
    default:
      return false;
  }
}

void Player::Toggle(std::atomic<bool>& overlay) {
  overlay = !overlay;
  m_grid.Refresh();
}

void Player::OnMenu(HMENU menu) {
  const PictureSettings& picture = m_grid.ChannelAt(m_grid.Selected()).picture;
  UpdateMenu(menu,
             {m_grid.Cells(), static_cast<Backend>(m_grid.CurrentBackend()), picture.mirror != 0,
              picture.mosaicLevel.has_value(), m_switches.texts, m_switches.assistance, m_switches.monitoring,
              m_playback.IsPaused(), m_playback.Repeats(), m_window.IsFullScreen(), m_showsColours});
}

void Player::OnSelect(size_t index) {
  if (index == m_grid.Selected()) return;
  m_grid.Select(index);
  ChooseSound();
  OnArrange();
  ShowColours();
}

void Player::SetCells(int cells) {
  if (!m_grid.ChannelAt(0).IsClip())
    while (m_grid.Count() < static_cast<size_t>(cells))
      m_grid.Add(OpenScene(m_options, static_cast<int>(m_grid.Count())));
  m_grid.SetCells(cells);
  OnArrange();
}

void Player::SetFullScreen(bool full) {
  m_window.SetFullScreen(full);
  OnArrange();
  OnRaise();
}

void Player::SaveSnapshot() {
  const std::string path = NewSnapshotPath();
  const Frame frame = Chosen().Thread().Current();
  Note(frame && ::SaveSnapshot(frame, path) ? "saved " + path : path + ": the snapshot could not be written");
}

void Player::OnDrop(const std::vector<std::string>& paths) {
  Open(paths);
}

/// What cannot be opened leaves everything as it was.
void Player::Open(const std::vector<std::string>& paths) try {
  if (paths.empty()) return;
  Options options = m_options;
  options.files = paths;
  options.sound.clear();
  options.records.clear();
  options.channel.clear();
  options.holdAt.reset();
  options.monitor = false;
  Media media = OpenMedia(options);
  if (!media.soundPath.empty() && paths.size() == 1) {
    m_soundFile = media.soundPath;
    return ChooseSound();
  }
  m_options = options;
  for (const std::string& path : paths)
    m_settings.AddRecent(path);
  ShowMedia(std::move(media), m_grid.CurrentBackend());
  m_playback.SetPaused(false);
} catch (const std::exception& error) {
  MessageBoxW(m_window.Handle(), Wide(error.what()).c_str(), L"libnivral player", MB_OK | MB_ICONWARNING);
}
