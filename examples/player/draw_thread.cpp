// SPDX-License-Identifier: MIT
#include "player/draw_thread.h"

#include <cstdio>

#include "media_error.h"
#include "player/library.h"
#include "player/snapshot.h"

DrawThread::DrawThread(Pane& pane, FrameSource& source, Overlays& overlays, Plan plan)
    : m_pane(pane),
      m_source(source),
      m_overlays(overlays),
      m_plan(std::move(plan)),
      m_period(std::chrono::duration_cast<Clock::duration>(
          std::chrono::duration<double>(1 / source.FramesPerSecond()))),
      m_hold(m_plan.hold) {
}

void DrawThread::Start() {
  m_thread = std::jthread([this](const std::stop_token& stop) { Run(stop); });
}

void DrawThread::Stop() {
  m_thread.request_stop();
  if (m_thread.joinable()) m_thread.join();
}

void DrawThread::Run(const std::stop_token& stop) {
  m_due = Clock::now();
  try {
    while (!stop.stop_requested()) {
      const bool isNew = TakeFrame();
      const bool inTime = WaitUntilDue();
      if (inTime || !isNew || m_hold)
        DrawCurrent(isNew);
      else
        Count(1, 0);
      WriteSnapshot();
      ++m_draws;
    }
  } catch (const MediaError& error) {
    m_error = error.what();
    m_failed = true;
    m_finished = true;
  }
}

/// Whether the current frame is one that the pane has not seen.
bool DrawThread::TakeFrame() {
  const bool fresh = m_fresh.exchange(false);
  if (m_source.Frame() < 0) return Advance();
  if (fresh) return true;
  if (!m_hold) return Advance();
  if (m_steps == 0) return false;
  --m_steps;
  return Advance();
}

/// Reads the next frame; at the end of the clip starts again or stays on the last.
bool DrawThread::Advance() {
  if (m_source.Next()) return true;
  if (m_plan.loop) {
    m_source.Rewind();
    if (m_plan.onRewind) m_plan.onRewind();
    return m_source.Next();
  }
  m_finished = true;
  m_hold = true;
  return false;
}

/// False when the frame is so late that it is better left out. A machine that cannot keep up at all gets a
/// new start of the clock now and then instead of no picture.
bool DrawThread::WaitUntilDue() {
  constexpr int kLatePeriods = 2;
  constexpr int kHopelessPeriods = 8;
  std::this_thread::sleep_until(m_due);
  const auto late = Clock::now() - m_due;
  m_due += m_period;
  if (late > kHopelessPeriods * m_period) m_due = Clock::now() + m_period;
  return late <= kLatePeriods * m_period || late > kHopelessPeriods * m_period;
}

/// A paused pane keeps showing the record it has and takes no new ones, which would pile up.
void DrawThread::DrawCurrent(bool isNew) {
  if (!m_visible) return;
  const bool paused = !isNew && m_pane.KeepsRecordsWhilePaused() && m_overlays.HasRecords();
  m_pane.Set([paused](void* handle) { nivral.DWSetPause(handle, paused); });
  m_overlays.SetTexts(m_pane.Handle(), m_source.Frame());
  if (!paused && m_overlays.HasRecords() && m_pane.WantsRecord())
    m_overlays.SendRecord(m_pane.Handle(), m_source.Frame());
  const auto start = Clock::now();
  const uint32_t result = m_pane.Draw(m_source.Current(), m_source.Frame());
  Count(result, std::chrono::duration<double, std::milli>(Clock::now() - start).count());
}

void DrawThread::Count(uint32_t result, double milliseconds) {
  const std::scoped_lock hold(m_lock);
  if (result != 0) {
    ++m_figures.dropped;
  } else {
    ++m_figures.shown;
    m_figures.millisecondsInAll += milliseconds;
  }
}

Figures DrawThread::Result() const {
  const std::scoped_lock hold(m_lock);
  return m_figures;
}

void DrawThread::RequestSnapshot(std::string path) {
  const std::scoped_lock hold(m_lock);
  m_snapshot = std::move(path);
}

void DrawThread::WriteSnapshot() {
  std::string path;
  {
    const std::scoped_lock hold(m_lock);
    path.swap(m_snapshot);
  }
  if (!path.empty() && !SaveSnapshot(m_source.Current(), path))
    std::fprintf(stderr, "nivral_player: error: %s: the snapshot could not be written\n", path.c_str());
}
