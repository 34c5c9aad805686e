// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <optional>
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
    bool loop = false;              ///< start again at the end of the clip
    std::optional<int64_t> holdAt;  ///< begin with this frame and stay on it
    std::function<void()> onRewind;
  };

  /// Everything given outlives the thread.
  DrawThread(Pane& pane, FrameSource& source, Overlays& overlays, Plan plan);

  void Start();
  /// Ends the thread; safe to call again.
  void Stop();

  /// While held, the current frame is drawn again and again, so that settings still show.
  void Hold(bool hold) { m_hold = hold; }
  bool IsHeld() const { return m_hold; }

  /// How often a frame went to the pane so far.
  int64_t Draws() const { return m_draws; }

  /// Takes a snapshot of the current frame with the displayer's own operation.
  void RequestSnapshot(std::string path);

  /// Whether the clip has ended or failed.
  bool IsFinished() const { return m_finished; }
  /// Whether the thread has given up; Error says why.
  bool HasFailed() const { return m_failed; }

  // After Stop.
  const Figures& Result() const { return m_figures; }
  const std::string& Error() const { return m_error; }

 private:
  using Clock = std::chrono::steady_clock;

  void Run(const std::stop_token& stop);
  bool Advance();
  bool WaitUntilDue();
  void DrawCurrent(bool isNew);
  void WriteSnapshot();

  Pane& m_pane;
  FrameSource& m_source;
  Overlays& m_overlays;
  Plan m_plan;
  Clock::duration m_period;
  Clock::time_point m_due;
  std::atomic<bool> m_hold{false};
  std::atomic<bool> m_finished{false};
  std::atomic<bool> m_failed{false};
  std::atomic<int64_t> m_draws{0};
  std::mutex m_snapshotLock;
  std::string m_snapshot;
  Figures m_figures;
  std::string m_error;
  std::jthread m_thread;
};
