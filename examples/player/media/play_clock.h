// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <mutex>

/// The position that all panes show. It runs with the system's clock and follows the sound where there is
/// one. Any thread.
class PlayClock {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;

  struct Reading {
    double position;  ///< seconds
    uint64_t jump;    ///< grows with every jump
    bool runs;
    double speed;
  };

  Reading Read(TimePoint now = std::chrono::steady_clock::now()) const;

  /// Goes to a position and stays there until it is told to run.
  void JumpTo(double position);
  void Run(TimePoint now = std::chrono::steady_clock::now());
  void Stop(TimePoint now = std::chrono::steady_clock::now());
  /// Times the usual one.
  void SetSpeed(double speed, TimePoint now = std::chrono::steady_clock::now());

  /// The position that is heard now, as a device's request for more tells it. Such requests come late, and
  /// never early: the earliest of the last ones counts, and small differences are made up for little by
  /// little.
  void Follow(double heard, TimePoint now = std::chrono::steady_clock::now());

 private:
  double PositionAt(TimePoint now) const;
  void AnchorAt(double position, TimePoint now);

  mutable std::mutex m_lock;
  double m_anchor = 0;
  TimePoint m_anchoredAt;
  double m_speed = 1;
  bool m_runs = false;
  std::array<double, 16> m_heard{};  ///< the last positions that were heard, less the time of day; a ring
  size_t m_heardCount = 0;           ///< since it runs
  uint64_t m_jump = 0;
};
