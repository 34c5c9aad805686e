// SPDX-License-Identifier: MIT
#include "player/run.h"

#include <windows.h>

#include <cstdio>
#include <fstream>

#include "media_error.h"
#include "nivral/nivral.h"
#include "player/controls.h"
#include "player/draw_thread.h"
#include "player/frame_source.h"
#include "player/overlays.h"
#include "player/pane.h"
#include "player/screenshot.h"
#include "player/sound.h"
#include "player/window.h"

namespace {

constexpr int kMonitorWidth = 720;
constexpr int kMonitorHeight = 540;
constexpr DWORD kUntilOnScreenMs = 300;  ///< presenting is asynchronous

/// The library, from start-up to shut-down.
struct Library {
  explicit Library(Backend backend) { NIVRAL_InitializeEx(backend == Backend::kSdl); }
  ~Library() { NIVRAL_UnInitialize(); }
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;
};

std::unique_ptr<FrameSource> OpenSource(const Options& options) {
  return options.file.empty() ? MakeRoadSource(options.width, options.height) : OpenY4mFile(options.file);
}

std::unique_ptr<Overlays> MakeOverlays(const Options& options, double rate,
                                       const std::atomic<bool>& enabled) {
  return options.file.empty() ? MakeRoadOverlays(options, enabled)
                              : MakeTexts(options.channel, rate, enabled);
}

std::unique_ptr<Sound> OpenSound(const Options& options) {
  if (options.mute) return nullptr;
  if (options.sound.empty() && !options.file.empty()) return nullptr;
  if (options.sound.empty()) return std::make_unique<Sound>(EngineHum(), true, options.volume);
  std::ifstream file(options.sound, std::ios::binary);
  if (!file) throw MediaError(options.sound + ": cannot be opened");
  try {
    return std::make_unique<Sound>(ReadWav(file), false, options.volume);
  } catch (const MediaError& error) {
    throw MediaError(options.sound + ": " + error.what());
  }
}

/// One window with its pane and the thread that feeds it; released in the order that the library wants:
/// the thread ends, then the pane closes, then the window goes.
struct Display {
  Display(Backend backend, const char* title, int left, std::unique_ptr<FrameSource> frames,
          std::unique_ptr<Overlays> over, DrawThread::Plan plan)
      : source(std::move(frames)),
        overlays(std::move(over)),
        window(title, left, source->Current().width, source->Current().height),
        pane(backend, window.Handle(), source->Current().width, source->Current().height),
        thread(pane, *source, *overlays, std::move(plan)) {}

  std::unique_ptr<FrameSource> source;
  std::unique_ptr<Overlays> overlays;
  Window window;
  Pane pane;
  DrawThread thread;
};

/// Until the thread has begun and ended a draw, in reasonable time.
void WaitForDraws(const DrawThread& thread) {
  constexpr int kPauseMs = 20;
  constexpr int kLongestWaitMs = 20'000;
  const int64_t before = thread.Draws();
  for (int waited = 0; !thread.HasFailed() && thread.Draws() < before + 2 && waited < kLongestWaitMs;
       waited += kPauseMs)
    PumpMessages(kPauseMs);
}

class Player {
 public:
  explicit Player(const Options& options);
  int Run();

 private:
  void Play();
  void KeepPictures();
  int Report();

  Options m_options;
  Library m_library;
  std::atomic<bool> m_overlaysOn;
  std::unique_ptr<Sound> m_sound;
  std::unique_ptr<Display> m_road;
  std::unique_ptr<Display> m_driver;
};

Player::Player(const Options& options)
    : m_options(options), m_library(options.backend), m_overlaysOn(options.overlays) {
  auto source = OpenSource(options);
  auto overlays = MakeOverlays(options, source->FramesPerSecond(), m_overlaysOn);
  DrawThread::Plan plan;
  plan.loop = options.seconds > 0;
  plan.holdAt = options.holdAt;
  plan.onRewind = [this] {
    if (m_sound) m_sound->Restart();
  };
  m_road = std::make_unique<Display>(options.backend, "libnivral player", 0, std::move(source),
                                     std::move(overlays), std::move(plan));
  if (!options.monitor) return;
  DrawThread::Plan driverPlan;
  driverPlan.holdAt = options.holdAt;
  m_driver = std::make_unique<Display>(
      options.backend, "libnivral player: driver", m_road->window.Frame().right,
      MakeDriverSource(kMonitorWidth, kMonitorHeight),
      MakeDriverOverlays(kMonitorWidth, kMonitorHeight, m_overlaysOn), std::move(driverPlan));
}

int Player::Run() {
  PumpMessages(50);  // the windows' first paint
  m_sound = OpenSound(m_options);
  m_road->thread.Start();
  if (m_driver) m_driver->thread.Start();
  Play();
  m_sound.reset();
  KeepPictures();
  m_road->thread.Stop();
  if (m_driver) m_driver->thread.Stop();
  return Report();
}

/// The user interface's thread: messages, until the clip, the time or the user's patience ends.
void Player::Play() {
  Controls controls(m_options, m_road->window, m_road->pane, m_road->thread, m_sound.get(), m_overlaysOn);
  if (m_sound && m_options.holdAt) m_sound->Pause(true);
  const auto ms = static_cast<ULONGLONG>(m_options.seconds * 1000);
  const ULONGLONG end = GetTickCount64() + ms;
  while (!controls.WantsToEnd() && !m_road->thread.IsFinished() && (ms == 0 || GetTickCount64() < end))
    PumpMessages(20);
}

void Player::KeepPictures() {
  if (m_options.screenshot.empty() && m_options.snapshot.empty()) return;
  m_road->thread.Hold(true);
  if (m_driver) m_driver->thread.Hold(true);
  if (!m_options.snapshot.empty()) m_road->thread.RequestSnapshot(m_options.snapshot);
  WaitForDraws(m_road->thread);
  if (m_driver) WaitForDraws(m_driver->thread);
  PumpMessages(kUntilOnScreenMs);
  if (m_options.screenshot.empty()) return;
  std::vector<HWND> windows{m_road->window.Handle()};
  if (m_driver) windows.push_back(m_driver->window.Handle());
  SaveScreenshot(windows, m_options.screenshot);
}

int Player::Report() {
  if (!m_road->thread.Error().empty()) throw MediaError(m_road->thread.Error());
  const Figures& figures = m_road->thread.Result();
  std::printf("%s\n", figures.Line().c_str());
  if (figures.shown == 0) throw std::runtime_error("no frame was shown");
  return 0;
}

}  // namespace

int RunPlayer(const Options& options) {
  return Player(options).Run();
}
