// SPDX-License-Identifier: MIT
#include "player/playback.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr ULONGLONG kLongestWaitForSoundMs = 1000;
constexpr double kHalfAFrameAtMost = 0.002;  ///< seconds

}  // namespace

Playback::Playback(PlayClock& clock, PaneGrid& grid, double speed, int volume)
    : m_clock(clock), m_grid(grid), m_speed(speed), m_volume(volume) {
  m_clock.SetSpeed(speed);
}

void Playback::SetSound(std::unique_ptr<SoundSource> sound) {
  Halt();
  m_sound.reset();
  if (sound) m_sound = std::make_unique<Sound>(std::move(sound), m_clock, m_volume);
}

void Playback::Tick() {
  const PlayClock::Reading now = m_clock.Read();
  if (!m_grid.HaveFollowed(now.jump)) return;
  if (m_stepsToDo != 0) StepNow();
  if (m_paused || m_stepsToDo != 0) return;
  if (!m_going) return Go();
  // Without a device that asks for samples the clock goes on by itself.
  const bool hears = m_sound && m_speed == 1 && !m_sound->IsHeard();
  if (!now.runs && (!hears || GetTickCount64() - m_goingSince > kLongestWaitForSoundMs)) m_clock.Run();
  if (Length() == 0 || !m_grid.HaveEnded() || now.position < Length()) return;
  if (m_repeat) return SeekTo(0);
  Halt();
  m_paused = true;
  m_atEnd = true;
}

void Playback::Go() {
  m_going = true;
  m_goingSince = GetTickCount64();
  if (m_sound && m_speed == 1) m_sound->Start(m_clock.Read().position);
}

void Playback::Halt() {
  m_going = false;
  m_clock.Stop();
  if (m_sound) m_sound->Stop();
}

void Playback::SetPaused(bool paused) {
  if (!paused && m_atEnd) SeekTo(0);
  m_paused = paused;
  if (paused) Halt();
}

void Playback::SeekTo(double seconds) {
  Halt();
  m_atEnd = false;
  const double length = Length();
  m_clock.JumpTo(std::clamp(seconds, 0.0, length > 0 ? length : std::max(seconds, 0.0)));
  m_grid.Refresh();
}

void Playback::Step(int frames) {
  SetPaused(true);
  m_stepsToDo += frames;
}

/// One frame, when the panes show where the last step went.
void Playback::StepNow() {
  const DrawThread::Place place = m_grid.ViewAt(m_grid.Selected()).Thread().Shown();
  const bool forward = m_stepsToDo > 0;
  m_stepsToDo += forward ? -1 : 1;
  if (!forward)
    SeekTo(std::max(0.0, place.time - kHalfAFrameAtMost));
  else if (!place.isLast)
    SeekTo(place.nextTime);
}

void Playback::SetSpeed(double speed) {
  m_speed = std::clamp(speed, kSlowest, kFastest);
  Halt();
  m_clock.SetSpeed(m_speed);
}

void Playback::SetVolume(int volume) {
  m_volume = std::clamp(volume, 0, 100);
  if (m_sound) m_sound->SetVolume(m_volume);
}

double Playback::Position() const {
  const double length = Length();
  const double position = std::max(0.0, m_clock.Read().position);
  return length > 0 ? std::min(position, length) : position;
}

double Playback::Length() const {
  return m_sound ? std::max(m_grid.Length(), m_sound->Duration()) : m_grid.Length();
}
