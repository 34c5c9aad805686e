// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "player/embed/overlays.h"
#include "player/embed/pane.h"
#include "player/figures.h"
#include "player/media/frame_source.h"
#include "player/media/play_clock.h"

/// A client's decoding thread: takes a pane's frames from their source and draws the one that the clock asks
/// for.
class DrawThread {
 public:
  /// What the pane shows.
  struct Place {
    uint64_t jump = 0;    ///< the clock's jump that the pane has followed
    double time = 0;      ///< of the frame shown
    double nextTime = 0;  ///< of the next one
    double end = 0;       ///< of the frame shown
    bool isLast = false;
    int width = 0;
    int height = 0;
  };

  /// Everything given outlives the thread.
  DrawThread(Pane& pane, FrameSource& source, Overlays& overlays, const PlayClock& clock);
  ~DrawThread() { Stop(); }

  void Start();
  /// On the window's thread: ends the thread; safe to call again.
  void Stop();

  /// The current frame's overlays or settings have changed.
  void Refresh();
  /// A pane out of sight takes no frames and draws none.
  void SetVisible(bool visible);

  /// How often a frame went to the pane so far.
  int64_t Draws() const { return m_draws; }
  Place Shown() const;
  Figures Result() const;
  /// What was wrong with the clip so far; empty when nothing was.
  std::string Trouble() const;
  /// The frame shown, as it came from its source.
  Frame Current() const;

 private:
  using Clock = std::chrono::steady_clock;

  void Run(const std::stop_token& stop);
  PlayClock::Reading ReadAhead() const;
  bool Follow(const PlayClock::Reading& reading);
  bool Take(const PlayClock::Reading& reading, bool exact);
  void Draw(bool isNew);
  void Count(bool isNew, nivral::Result result, double milliseconds);
  void Publish(uint64_t jump);
  void WaitFor(const std::stop_token& stop, const PlayClock::Reading& reading);

  Pane& m_pane;
  FrameSource& m_source;
  Overlays& m_overlays;
  const PlayClock& m_clock;
  Frame m_current;
  Frame m_next;
  bool m_ended = false;
  double m_drawingTakes = 0;  ///< seconds, on average
  bool m_followed = false;    ///< the clock's last jump
  uint64_t m_jump = 0;
  std::atomic<int64_t> m_draws{0};
  std::atomic<bool> m_fresh{false};
  mutable std::mutex m_lock;  ///< of all below
  std::condition_variable_any m_wake;
  bool m_visible = true;
  Place m_place;
  Figures m_figures;
  std::string m_trouble;
  Frame m_shown;
  struct HandleCloser {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
  };
  std::unique_ptr<void, HandleCloser> m_hasEnded;
  std::jthread m_thread;
};
