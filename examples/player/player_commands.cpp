// SPDX-License-Identifier: MIT
// What the player does for each command.
#include <cstdio>

#include "media_error.h"
#include "player/open_dialog.h"
#include "player/player.h"

void Player::OnCommand(Command command) {
  if (DoPanes(command)) return m_colours.Raise();
  if (DoPlayback(command) || DoOverlay(command)) return;
  switch (command) {
    case kCommandOpen:
      return OpenFiles();
    case kCommandSnapshot:
      return SaveSnapshot();
    case kCommandExit:
      m_wantsToEnd = true;
      return;
    case kCommandColours:
      m_colours.Show();
      break;
    default:
      Chosen().Control().Do(command);
  }
  ShowColours();
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
      m_grid.Select((m_grid.Selected() + 1) % m_grid.Count());
      return true;
    case kCommandSdl:
    case kCommandDirect3D:
    case kCommandDirectDraw:
      m_grid.SetBackend(static_cast<Backend>(command - kCommandSdl));
      return true;
    default:
      return false;
  }
}

bool Player::DoPlayback(Command command) {
  constexpr int kVolumeStep = 10;
  switch (command) {
    case kCommandPause:
      SetPaused(!m_paused);
      return true;
    case kCommandStep:
      SetPaused(true);
      m_grid.Step();
      return true;
    case kCommandLouder:
      ChangeVolume(kVolumeStep);
      return true;
    case kCommandQuieter:
      ChangeVolume(-kVolumeStep);
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
  m_grid.RefreshOverlays();
}

void Player::OnMenu(HMENU menu) {
  const PictureSettings& picture = m_grid.ChannelAt(m_grid.Selected()).picture;
  UpdateMenu(menu,
             {m_grid.Cells(), m_grid.CurrentBackend(), picture.mirror != 0, picture.mosaicLevel.has_value(),
              m_switches.texts, m_switches.assistance, m_switches.monitoring, m_paused});
}

void Player::SetCells(int cells) {
  if (m_options.clips.empty())
    while (m_grid.Count() < static_cast<size_t>(cells))
      m_grid.Add(OpenScene(m_options, static_cast<int>(m_grid.Count())));
  m_grid.SetCells(cells);
}

void Player::SetPaused(bool paused) {
  m_paused = paused;
  m_grid.Hold(paused);
  for (const auto& sound : m_sounds)
    sound->Pause(paused);
}

void Player::ChangeVolume(int step) {
  for (const auto& sound : m_sounds)
    sound->SetVolume(sound->Volume() + step);
}

void Player::SaveSnapshot() {
  static int number = 0;
  const std::string path = "nivral_snapshot_" + std::to_string(++number) + ".bmp";
  Chosen().Thread().RequestSnapshot(path);
  std::printf("snapshot: %s\n", path.c_str());
}

/// What cannot be opened leaves everything as it was.
void Player::OpenFiles() try {
  const std::vector<std::string> paths = AskForFiles(m_window.Handle());
  if (paths.empty()) return;
  Options options = m_options;
  options.clips.clear();
  options.sounds.clear();
  options.holdAt.reset();
  options.monitor = false;
  for (const std::string& path : paths)
    AddFile(path, options);
  if (options.clips.empty()) {
    options.clips = m_options.clips;
    OpenSounds(options);
    return;
  }
  std::deque<Channel> channels = OpenChannels(options);
  OpenSounds(options);
  m_options = options;
  m_grid.Open(std::move(channels), m_grid.CurrentBackend());
} catch (const std::exception& error) {
  MessageBoxA(m_window.Handle(), error.what(), "libnivral player", MB_OK | MB_ICONWARNING);
}
