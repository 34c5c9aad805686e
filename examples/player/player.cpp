// SPDX-License-Identifier: MIT
#include "player/player.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "media_error.h"
#include "player/windows/screenshot.h"
#include "player/windows/snapshot.h"

namespace {

constexpr DWORD kPauseMs = 15;
constexpr DWORD kUntilOnScreenMs = 300;  ///< presenting is asynchronous
constexpr ULONGLONG kFiguresEveryMs = 1000;
constexpr ULONGLONG kNoteForMs = 6000;
constexpr const char* kBackendNames[] = {"SDL2", "Direct3D 9", "DirectDraw"};
constexpr char kHum[] = "*hum*";  ///< no file has this name

nivral::Backend Of(Backend backend) {
  return static_cast<nivral::Backend>(backend);
}

std::string TimeText(double seconds) {
  const auto tenths = static_cast<int64_t>(std::floor(seconds * 10));
  char text[32];
  std::snprintf(text, sizeof(text), "%lld:%02lld.%lld", static_cast<long long>(tenths / 600),
                static_cast<long long>(tenths / 10 % 60), static_cast<long long>(tenths % 10));
  return text;
}

}  // namespace

Player::Player(const Options& options)
    : m_options(options),
      m_settings(options.remember ? LoadSettings() : Settings{}),
      m_switches(options.overlays),
      m_bar(m_window.Handle(), [this](double seconds) { m_playback.SeekTo(seconds); }),
      m_colours(m_window.Handle(), [this](const ColourSettings& c) { Chosen().Control().SetColours(c); }),
      m_grid(m_window, m_switches, m_clock, *this),
      m_playback(m_clock, m_grid, options.speed, options.volume.value_or(m_settings.volume)) {
  Media media = OpenMedia(options);
  m_playback.SetRepeat(options.repeat || m_settings.repeat);
  m_playback.SetPaused(options.holdAt.has_value());
  const int cells = options.panes > 0 ? options.panes : static_cast<int>(media.channels.size());
  const Frame& first = media.channels.front().first;
  const auto aspect = media.channels.front().source->PixelAspect();
  if (m_settings.placement) {
    m_window.Show(*m_settings.placement);
  } else {
    PixelSize client =
        WindowSizeFor(cells, {static_cast<int>(std::lround(first.width * aspect)), first.height});
    client.height += TimeBar::kHeight;
    m_window.Show(client);
  }
  for (const std::string& path : options.files)
    m_settings.AddRecent(path);
  m_window.SetEvents(this);
  OnArrange();
  Pump(50);  // the window's first paint
  ShowMedia(std::move(media), Of(options.backend));
  if (options.panes > 0) SetCells(options.panes);
  if (options.holdAt) {
    const Channel& leading = m_grid.ChannelAt(0);
    const double frames = static_cast<double>(*options.holdAt) + 0.5;
    m_playback.SeekTo(leading.first.time + frames / leading.source->FramesPerSecond());
  }
}

Player::~Player() {
  m_window.SetEvents(nullptr);
  m_playback.SetSound(nullptr);
}

void Player::ShowMedia(Media media, nivral::Backend backend) {
  m_playback.SetSound(nullptr);
  m_soundPath.clear();
  m_soundFile = media.soundPath;
  m_told.clear();
  m_playback.SeekTo(0);
  m_grid.Open(std::move(media.channels), backend);
  ChooseSound();
  OnArrange();
  ShowColours();
  ShowRecentFiles(GetMenu(m_window.Handle()), m_settings.recent);
}

/// The chosen pane's sound, or the first there is. Drawn scenes hum.
std::string Player::SoundPath() const {
  if (m_options.mute) return "";
  if (!m_options.sound.empty()) return m_options.sound;
  if (!m_soundFile.empty()) return m_soundFile;
  if (!m_grid.ChannelAt(0).IsClip()) return kHum;
  if (m_grid.ChannelAt(m_grid.Selected()).source->HasSound()) return m_grid.ChannelAt(m_grid.Selected()).path;
  for (size_t i = 0; i < m_grid.Count(); ++i)
    if (m_grid.ChannelAt(i).source->HasSound()) return m_grid.ChannelAt(i).path;
  return "";
}

void Player::ChooseSound() try {
  const std::string path = SoundPath();
  if (path == m_soundPath) return;
  m_soundPath = path;
  m_playback.SetSound(path.empty() ? nullptr : path == kHum ? MakeEngineHum() : OpenSound(path));
} catch (const MediaError& error) {
  Note(error.what());
}

int Player::Run() {
  const auto ms = static_cast<ULONGLONG>(m_options.seconds * 1000);
  const ULONGLONG end = GetTickCount64() + ms;
  m_window.StartTicks();
  while (!m_wantsToEnd && (ms == 0 || GetTickCount64() < end)) {
    Pump(kPauseMs);
    if (m_options.exitAtEnd && m_playback.IsAtEnd()) break;
  }
  KeepPictures();
  m_playback.SetSound(nullptr);
  Remember();
  const Figures figures = m_grid.Result();
  for (const std::string& trouble : m_grid.Troubles())
    std::fprintf(stderr, "nivral_player: warning: %s\n", trouble.c_str());
  std::printf("%s\n", figures.Line().c_str());
  if (figures.shown == 0) throw std::runtime_error("no frame was shown");
  return 0;
}

void Player::OnTick() {
  m_playback.Tick();
  if (m_grid.IsOutOfPlace()) OnArrange();
  ShowTime();
  ShowFigures();
}

void Player::Pump(DWORD ms) {
  PumpMessages(ms, [this](MSG& message) {
    return TranslateAcceleratorW(m_window.Handle(), CommandKeys(), &message) != 0;
  });
}

void Player::OnArrange() {
  const PixelSize size = m_window.Size();
  const bool bare = m_window.IsFullScreen();
  const PixelArea room =
      RoomForPanes(size, m_showsColours && !bare ? ColourPanel::kWidth : 0, bare ? 0 : TimeBar::kHeight);
  m_bar.Place({0, room.height, size.width, bare ? 0 : size.height - room.height});
  m_colours.Place({room.width, 0, size.width - room.width, room.height});
  m_grid.Arrange(room);
}

void Player::OnRaise() {
  if (IsWindowEnabled(m_window.Handle())) m_grid.Raise();  // else a dialog is to stay on top
}

void Player::ShowColours() {
  m_colours.SetColours(m_grid.ChannelAt(m_grid.Selected()).picture.colours);
}

void Player::Note(std::string text) {
  m_note = std::move(text);
  m_noteUntil = GetTickCount64() + kNoteForMs;
}

void Player::ShowTime() {
  for (const std::string& trouble : m_grid.Troubles())
    if (std::find(m_told.begin(), m_told.end(), trouble) == m_told.end()) {
      Note(trouble);
      m_told.push_back(trouble);
    }
  TimeBar::State state{m_playback.Position(), m_playback.Length(), "", ""};
  state.left = TimeText(state.position) + (state.length > 0 ? " / " + TimeText(state.length) : "");
  if (m_playback.IsPaused()) state.left += m_playback.IsAtEnd() ? "   end" : "   paused";
  if (GetTickCount64() < m_noteUntil) state.left += "   " + m_note;
  char speed[32];
  std::snprintf(speed, sizeof(speed), "speed %g   ", m_playback.Speed());
  state.right =
      std::string(m_playback.Repeats() ? "repeat   " : "") + speed +
      (m_playback.HasSound() ? "volume " + std::to_string(m_playback.Volume()) + " %" : "no sound") +
      "   F1: keys";
  m_bar.Show(std::move(state));
}

void Player::ShowFigures() {
  const ULONGLONG now = GetTickCount64();
  const ULONGLONG passed = now - m_lastFiguresAt;
  if (passed < kFiguresEveryMs) return;
  const Figures all = m_grid.Result();
  const Figures recent = all - m_lastFigures;
  const double perPane = static_cast<double>(recent.shown) / std::max(m_grid.VisiblePanes(), 1);
  char title[128];
  std::snprintf(title, sizeof(title), "libnivral player - %s - %.1f fps, %lld dropped, %.2f ms per frame%s",
                kBackendNames[static_cast<size_t>(m_grid.CurrentBackend())],
                perPane * 1000 / static_cast<double>(passed), static_cast<long long>(all.dropped),
                recent.MillisecondsPerFrame(), m_playback.IsPaused() ? " - paused" : "");
  m_window.SetTitle(title);
  m_lastFigures = all;
  m_lastFiguresAt = now;
}

/// Until everything asked for is shown, and the threads have drawn it often enough that graphics drivers have
/// got round to it, in reasonable time.
void Player::WaitForDraws() {
  constexpr int kDraws = 4;
  constexpr int kLongestWaitMs = 60'000;
  std::vector<int64_t> enough;
  const auto isDone = [&] {
    if (!m_playback.HasSettled()) return false;
    for (size_t i = enough.size(); i < m_grid.Count(); ++i)
      enough.push_back(m_grid.ViewAt(i).Thread().Draws() + kDraws);
    for (size_t i = 0; i < m_grid.Count(); ++i)
      if (m_grid.IsVisible(i) && m_grid.ViewAt(i).Thread().Draws() < enough[i]) return false;
    return true;
  };
  for (int waited = 0; waited < kLongestWaitMs && !isDone(); waited += kPauseMs)
    Pump(kPauseMs);
}

void Player::KeepPictures() {
  if (m_options.screenshot.empty() && m_options.snapshot.empty()) return;
  m_playback.SetPaused(true);
  WaitForDraws();
  ShowTime();
  Pump(kUntilOnScreenMs);
  if (!m_options.snapshot.empty() && !::SaveSnapshot(m_grid.ViewAt(0).Thread().Current(), m_options.snapshot))
    throw std::runtime_error(m_options.snapshot + ": the snapshot could not be written");
  if (!m_options.screenshot.empty()) SaveScreenshot(m_window.Handle(), m_options.screenshot);
}

void Player::Remember() {
  if (!m_options.remember) return;
  m_settings.volume = m_playback.Volume();
  m_settings.repeat = m_playback.Repeats();
  m_settings.placement = m_window.Placement();
  SaveSettings(m_settings);
}
