// SPDX-License-Identifier: MIT
#include "player/player.h"

#include <algorithm>
#include <cstdio>
#include <fstream>

#include "media_error.h"
#include "player/open_dialog.h"
#include "player/screenshot.h"

namespace {

constexpr DWORD kUntilOnScreenMs = 300;  ///< presenting is asynchronous
constexpr ULONGLONG kFiguresEveryMs = 1000;
constexpr const char* kBackendNames[] = {"SDL2", "Direct3D 9", "DirectDraw"};

std::unique_ptr<Sound> OpenWav(const std::string& path, int volume) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw MediaError(path + ": the file cannot be opened");
  try {
    return std::make_unique<Sound>(ReadWav(file), false, volume);
  } catch (const MediaError& error) {
    throw MediaError(path + ": " + error.what());
  }
}

}  // namespace

Player::Player(const Options& options)
    : m_options(options),
      m_switches(options.overlays),
      m_colours(m_window.Handle(), [this](const ColourSettings& c) { Chosen().Control().SetColours(c); }),
      m_grid(m_window, m_switches,
             {options.holdAt.has_value(), options.loop || options.seconds > 0,
              [this] {
                for (const auto& sound : m_sounds)
                  sound->Restart();
              }},
             [this] { ShowColours(); }),
      m_paused(options.holdAt.has_value()) {
  std::deque<Channel> channels = OpenChannels(options);
  const int cells = options.panes > 0 ? options.panes : static_cast<int>(channels.size());
  OpenSounds(options);
  m_window.Show(WindowSizeFor(cells, channels.front().Size()));
  Pump(50);  // the window's first paint
  m_grid.Open(std::move(channels), options.backend);
  m_grid.SetCells(cells);
  m_window.SetEvents(this);
}

Player::~Player() {
  m_window.SetEvents(nullptr);
}

void Player::OnRaise() {
  if (!IsWindowEnabled(m_window.Handle())) return;  // a dialog is to stay on top
  m_grid.Raise();
  m_colours.Raise();
}

void Player::ShowColours() {
  m_colours.SetColours(m_grid.ChannelAt(m_grid.Selected()).picture.colours);
}

void Player::OpenSounds(const Options& options) {
  std::vector<std::unique_ptr<Sound>> sounds;
  if (!options.mute) {
    for (const std::string& path : options.sounds)
      sounds.push_back(OpenWav(path, options.volume));
    if (options.clips.empty() && options.sounds.empty())
      sounds.push_back(std::make_unique<Sound>(EngineHum(), true, options.volume));
  }
  for (const auto& sound : sounds)
    sound->Pause(m_paused);
  m_sounds = std::move(sounds);
}

int Player::Run() {
  const auto ms = static_cast<ULONGLONG>(m_options.seconds * 1000);
  const ULONGLONG end = GetTickCount64() + ms;
  while (!m_wantsToEnd && !m_grid.IsFinished() && (ms == 0 || GetTickCount64() < end)) {
    Pump(20);
    ShowFigures();
  }
  m_sounds.clear();
  KeepPictures();
  m_grid.Finish();
  const Figures figures = m_grid.Result();
  std::printf("%s\n", figures.Line().c_str());
  if (figures.shown == 0) throw std::runtime_error("no frame was shown");
  return 0;
}

void Player::Pump(DWORD ms) {
  PumpMessages(ms, [this](MSG& message) {
    return m_colours.Takes(message) || TranslateAcceleratorA(m_window.Handle(), CommandKeys(), &message) != 0;
  });
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
                recent.MillisecondsPerFrame(), m_paused ? " - paused" : "");
  m_window.SetTitle(title);
  m_lastFigures = all;
  m_lastFiguresAt = now;
}

/// Until the thread has drawn often enough that graphics drivers have got round to the current frame, in
/// reasonable time.
void Player::WaitForDraws(const DrawThread& thread) {
  constexpr int kDraws = 4;
  constexpr int kPauseMs = 20;
  constexpr int kLongestWaitMs = 20'000;
  const int64_t before = thread.Draws();
  for (int waited = 0; !thread.HasFailed() && thread.Draws() < before + kDraws && waited < kLongestWaitMs;
       waited += kPauseMs)
    Pump(kPauseMs);
}

void Player::KeepPictures() {
  if (m_options.screenshot.empty() && m_options.snapshot.empty()) return;
  m_grid.Hold(true);
  if (!m_options.snapshot.empty()) m_grid.ViewAt(0).Thread().RequestSnapshot(m_options.snapshot);
  for (size_t i = 0; i < m_grid.Count(); ++i)
    WaitForDraws(m_grid.ViewAt(i).Thread());
  Pump(kUntilOnScreenMs);
  if (!m_options.screenshot.empty()) SaveScreenshot(m_window.Handle(), m_options.screenshot);
}
