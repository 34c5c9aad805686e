// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include "player/embed/sound.h"
#include "player/media/play_clock.h"
#include "player/pane_grid.h"

/// The course of time for all panes: playing, pausing, seeking, speed, and the sound that leads. Window
/// thread.
class Playback {
 public:
  static constexpr double kSlowest = 0.25;
  static constexpr double kFastest = 8;

  /// Everything given outlives the object.
  Playback(PlayClock& clock, PaneGrid& grid, double speed, int volume);

  /// Makes another sound the one that leads; null: none.
  void SetSound(std::unique_ptr<SoundSource> sound);

  /// To be called often: goes on when all panes have followed a jump, and ends at the end.
  void Tick();

  void SetPaused(bool paused);
  bool IsPaused() const { return m_paused; }
  void SeekTo(double seconds);
  /// So many frames of the chosen pane forward or, below zero, back; pauses.
  void Step(int frames);
  void SetSpeed(double speed);
  double Speed() const { return m_speed; }
  void SetRepeat(bool repeat) { m_repeat = repeat; }
  bool Repeats() const { return m_repeat; }
  void SetVolume(int volume);
  int Volume() const { return m_volume; }
  bool HasSound() const { return m_sound != nullptr; }

  double Position() const;
  /// Seconds; 0: without end.
  double Length() const;
  /// Whether the panes show the place that was asked for last.
  bool HasSettled() const { return m_stepsToDo == 0 && m_grid.HaveFollowed(m_clock.Read().jump); }
  /// Whether the end was reached and nothing is going on.
  bool IsAtEnd() const { return m_atEnd; }

 private:
  void Go();
  void Halt();
  void StepNow();

  PlayClock& m_clock;
  PaneGrid& m_grid;
  std::unique_ptr<Sound> m_sound;
  double m_speed;
  int m_volume;
  bool m_paused = false;
  bool m_repeat = false;
  bool m_atEnd = false;
  bool m_going = false;        ///< the clock runs, or waits for the sound
  ULONGLONG m_goingSince = 0;  ///< milliseconds
  int m_stepsToDo = 0;
};
