// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

#include "player/figures.h"
#include "player/frame_source.h"
#include "player/overlays.h"
#include "player/pane.h"

/// A client's decoding thread: reads a pane's frames and feeds them at the clip's rate.
class DrawThread {
 public:
  struct Plan {
    bool hold = false;
    bool loop = false;  ///< start again at the end of the clip
    std::function<void()> onRewind;
  };

  /// Everything given outlives the thread.
  DrawThread(Pane& pane, FrameSource& source, Overlays& overlays, Plan plan);
  ~DrawThread() { Stop(); }

  void Start();
  /// Ends the thread; safe to call again.
  void Stop();

  /// While held, the current frame is drawn again and again, so that settings still show.
  void Hold(bool hold) { m_hold = hold; }
  /// Shows one more frame while held.
  void Step() { ++m_steps; }
  /// The current frame's overlays have changed.
  void Refresh() { m_fresh = true; }
  /// A pane out of sight gets no frames, but its clip goes on.
  void SetVisible(bool visible) { m_visible = visible; }

  /// How often a frame went to the pane so far.
  int64_t Draws() const { return m_draws; }
  Figures Result() const;

  /// Writes the current frame as it came from its source to a BMP file.
  void RequestSnapshot(std::string path);

  /// Whether the clip has ended or failed.
  bool IsFinished() const { return m_finished; }
  /// Whether the thread has given up; Error says why, after Stop.
  bool HasFailed() const { return m_failed; }
  const std::string& Error() const { return m_error; }

 private:
  using Clock = std::chrono::steady_clock;

  void Run(const std::stop_token& stop);
  bool TakeFrame();
  bool Advance();
  bool WaitUntilDue();
  void DrawCurrent(bool isNew);
  void Count(uint32_t result, double milliseconds);
  void WriteSnapshot();

  Pane& m_pane;
  FrameSource& m_source;
  Overlays& m_overlays;
  Plan m_plan;
  Clock::duration m_period;
  Clock::time_point m_due;
  std::atomic<bool> m_hold;
  std::atomic<int> m_steps{0};
  std::atomic<bool> m_fresh{true};
  std::atomic<bool> m_visible{true};
  std::atomic<bool> m_finished{false};
  std::atomic<bool> m_failed{false};
  std::atomic<int64_t> m_draws{0};
  mutable std::mutex m_lock;  ///< of the two below
  std::string m_snapshot;
  Figures m_figures;
  std::string m_error;
  std::jthread m_thread;
};
