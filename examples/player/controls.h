// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>

#include "player/draw_thread.h"
#include "player/options.h"
#include "player/pane.h"
#include "player/sound.h"
#include "player/window.h"

/// Turns what the user does with a pane's window into calls on the pane; at first, the command line's
/// settings. Lives on the window's thread.
class Controls : public WindowEvents {
 public:
  /// `sound` may be null. Everything given outlives the controls.
  Controls(const Options& options, Window& window, Pane& pane, DrawThread& thread, Sound* sound,
           std::atomic<bool>& overlays);
  ~Controls() override;

  bool WantsToEnd() const { return m_wantsToEnd; }

  void OnSize() override;
  void OnKey(int virtualKey) override;
  void OnWheel(int steps, POINT at) override;
  void OnDrag(const RECT& area) override;
  void OnClose() override { m_wantsToEnd = true; }

 private:
  void ToggleHold();
  void ApplyMirror();
  void ApplyColours();
  void ApplyZoom();
  void ApplyMosaic();
  void ChangeColour(int ColourSettings::*value, int step, int low, int high);
  void ChangeMosaicLevel(int step);
  void ChangeVolume(int step);
  POINT PerMille(POINT at) const;

  Options m_settings;
  Window& m_window;
  Pane& m_pane;
  DrawThread& m_thread;
  Sound* m_sound;
  std::atomic<bool>& m_overlays;
  bool m_wantsToEnd = false;
};
