// SPDX-License-Identifier: MIT
#include "player/media/play_clock.h"

#include <cmath>

double PlayClock::PositionAt(TimePoint now) const {
  if (!m_runs) return m_anchor;
  return m_anchor + m_speed * std::chrono::duration<double>(now - m_anchoredAt).count();
}

void PlayClock::AnchorAt(double position, TimePoint now) {
  m_anchor = position;
  m_anchoredAt = now;
}

PlayClock::Reading PlayClock::Read(TimePoint now) const {
  const std::scoped_lock hold(m_lock);
  return {PositionAt(now), m_jump, m_runs, m_speed};
}

void PlayClock::JumpTo(double position) {
  const std::scoped_lock hold(m_lock);
  m_anchor = position;
  m_runs = false;
  ++m_jump;
}

void PlayClock::Run(TimePoint now) {
  const std::scoped_lock hold(m_lock);
  AnchorAt(PositionAt(now), now);
  m_runs = true;
  m_hasFollowed = false;
}

void PlayClock::Stop(TimePoint now) {
  const std::scoped_lock hold(m_lock);
  m_anchor = PositionAt(now);
  m_runs = false;
}

void PlayClock::SetSpeed(double speed, TimePoint now) {
  const std::scoped_lock hold(m_lock);
  AnchorAt(PositionAt(now), now);
  m_speed = speed;
}

void PlayClock::Follow(double heard, TimePoint now) {
  constexpr double kTooFarOff = 0.06;
  constexpr double kShare = 0.1;
  const std::scoped_lock hold(m_lock);
  if (!m_runs) return;
  const double off = heard - PositionAt(now);
  const bool isSudden = !m_hasFollowed || std::fabs(off) > kTooFarOff;
  AnchorAt(PositionAt(now) + (isSudden ? off : kShare * off), now);
  m_hasFollowed = true;
}
