// SPDX-License-Identifier: MIT
#include "player/media/play_clock.h"

#include <algorithm>
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
  m_heardCount = 0;
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
  const double seconds = std::chrono::duration<double>(now.time_since_epoch()).count();
  const bool isFirst = m_heardCount == 0;
  m_heard[m_heardCount++ % m_heard.size()] = heard - seconds;
  const auto known = static_cast<ptrdiff_t>(std::min(m_heardCount, m_heard.size()));
  const double off = *std::max_element(m_heard.begin(), m_heard.begin() + known) + seconds - PositionAt(now);
  const bool isSudden = isFirst || std::fabs(off) > kTooFarOff;
  AnchorAt(PositionAt(now) + (isSudden ? off : kShare * off), now);
}
