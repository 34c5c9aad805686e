// SPDX-License-Identifier: MIT
#include "player/embed/draw_thread.h"

#include <algorithm>

DrawThread::DrawThread(Pane& pane, FrameSource& source, Overlays& overlays, const PlayClock& clock)
    : m_pane(pane), m_source(source), m_overlays(overlays), m_clock(clock) {
}

namespace {

/// Messages that other threads send to this one's windows: graphics drivers may send some while they present,
/// and the drawing thread itself does.
void HandleMessagesUntil(HANDLE event) {
  MSG message;
  while (MsgWaitForMultipleObjects(1, &event, FALSE, INFINITE, QS_SENDMESSAGE) == WAIT_OBJECT_0 + 1)
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
}

}  // namespace

void DrawThread::Start() {
  m_hasEnded.reset(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  m_thread = std::jthread([this](const std::stop_token& stop) {
    Run(stop);
    SetEvent(m_hasEnded.get());
  });
}

void DrawThread::Stop() {
  m_thread.request_stop();
  if (!m_thread.joinable()) return;
  HandleMessagesUntil(m_hasEnded.get());
  m_thread.join();
}

void DrawThread::Run(const std::stop_token& stop) {
  // Sound breaks off sooner than anyone sees a frame missing.
  SetThreadPriority(GetCurrentThread(), THREAD_PRIORITY_BELOW_NORMAL);
  while (!stop.stop_requested()) {
    const PlayClock::Reading reading = ReadAhead();
    const bool isNew = Follow(reading);
    if (m_current) Draw(isNew);
    Publish(reading.jump);
    WaitFor(stop, reading);
  }
}

/// A frame is seen when it has been drawn and the system has put it on the screen, so its drawing begins that
/// much earlier.
PlayClock::Reading DrawThread::ReadAhead() const {
  constexpr double kUntilOnScreen = 0.016;
  PlayClock::Reading reading = m_clock.Read();
  if (reading.runs) reading.position += (m_drawingTakes + kUntilOnScreen) * reading.speed;
  return reading;
}

/// Brings the frame that the clock asks for; whether it is to be drawn as another one than before.
bool DrawThread::Follow(const PlayClock::Reading& reading) {
  if (m_followed && reading.jump == m_jump) {
    const bool isFresh = m_fresh.exchange(false);
    return Take(reading, false) || isFresh;
  }
  m_source.Seek(reading.position);
  m_next = {};
  m_ended = false;
  Take(reading, true);
  m_jump = reading.jump;
  m_followed = true;
  return true;
}

/// Reads up to the last frame that is due, and one further. Of frames that come late only the last is taken,
/// but one at least every now and then.
bool DrawThread::Take(const PlayClock::Reading& reading, bool exact) {
  constexpr auto kLongestWithoutPicture = std::chrono::milliseconds(250);
  constexpr double kRounding = 0.0005;
  const auto start = Clock::now();
  const double due = reading.position + kRounding;
  int taken = 0;
  while (!m_ended) {
    if (m_next) {
      if (m_next.time > due && (taken > 0 || !exact)) break;
      m_current = std::move(m_next);
      ++taken;
      if (!exact && Clock::now() - start > kLongestWithoutPicture) break;
    }
    m_next = m_source.Next(reading.position, exact);
    m_ended = !m_next;
  }
  const std::scoped_lock hold(m_lock);
  if (!exact && reading.speed <= 1) m_figures.dropped += std::max(taken - 1, 0);
  return taken > 0;
}

/// One record goes before each new frame. A pane that shows a frame again keeps the record it has, except its
/// very first, which would stay for one frame only.
void DrawThread::Draw(bool isNew) {
  constexpr double kShareOfNewest = 0.1;
  constexpr double kLongestLead = 0.05;
  const bool hasRecords = m_overlays.HasRecords();
  const bool keeps = !isNew && hasRecords && m_draws > 1;
  m_pane.Set([keeps](nivral::Display& display) { display.SetPause(keeps); });
  m_overlays.SetTexts(m_pane, m_current);
  if (!keeps && hasRecords) m_overlays.SendRecord(m_pane, m_current);
  const auto start = Clock::now();
  const nivral::Result result = m_pane.Draw(m_current);
  const std::chrono::duration<double> taken = Clock::now() - start;
  m_drawingTakes += kShareOfNewest * (std::min(taken.count(), kLongestLead) - m_drawingTakes);
  Count(isNew, result, taken.count() * 1000);
  ++m_draws;
}

void DrawThread::Count(bool isNew, nivral::Result result, double milliseconds) {
  const std::scoped_lock hold(m_lock);
  if (!result) {
    m_figures.dropped += isNew ? 1 : 0;
    return;
  }
  m_figures.shown += isNew ? 1 : 0;
  ++m_figures.draws;
  m_figures.millisecondsInAll += milliseconds;
}

void DrawThread::Publish(uint64_t jump) {
  const std::scoped_lock hold(m_lock);
  m_shown = m_current;
  m_trouble = m_source.Trouble();
  m_place = {jump,    m_current.time,  m_next.time,     m_current.time + m_current.duration,
             m_ended, m_current.width, m_current.height};
}

/// Until the next frame is due, something changes, or it is time to show the current frame again.
void DrawThread::WaitFor(const std::stop_token& stop, const PlayClock::Reading& reading) {
  constexpr auto kShowAgainAfter = std::chrono::milliseconds(66);
  auto pause = std::chrono::duration_cast<Clock::duration>(kShowAgainAfter);
  if (reading.runs && m_next) {
    const PlayClock::Reading now = ReadAhead();
    const std::chrono::duration<double> due((m_next.time - now.position) / now.speed);
    pause = std::clamp(std::chrono::duration_cast<Clock::duration>(due), Clock::duration(0), pause);
  }
  std::unique_lock hold(m_lock);
  m_wake.wait_for(hold, stop, pause, [this] { return m_fresh.load(); });
  if (m_visible) return;
  m_wake.wait(hold, stop, [this] { return m_visible; });
  m_followed = false;
}

void DrawThread::Refresh() {
  m_fresh = true;
  m_wake.notify_all();
}

void DrawThread::SetVisible(bool visible) {
  {
    const std::scoped_lock hold(m_lock);
    m_visible = visible;
  }
  m_wake.notify_all();
}

DrawThread::Place DrawThread::Shown() const {
  const std::scoped_lock hold(m_lock);
  return m_place;
}

Figures DrawThread::Result() const {
  const std::scoped_lock hold(m_lock);
  return m_figures;
}

std::string DrawThread::Trouble() const {
  const std::scoped_lock hold(m_lock);
  return m_trouble;
}

Frame DrawThread::Current() const {
  const std::scoped_lock hold(m_lock);
  return m_shown;
}
