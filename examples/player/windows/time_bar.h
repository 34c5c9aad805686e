// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "player/windows/layout.h"

/// The strip under the panes: a line with the position, which is clicked or dragged to seek, and texts.
class TimeBar {
 public:
  static constexpr int kHeight = 44;

  struct State {
    double position = 0;  ///< seconds
    double length = 0;    ///< 0: without end, and without a line
    std::string left;
    std::string right;

    bool operator==(const State&) const = default;
  };

  /// Throws std::runtime_error.
  TimeBar(HWND main, std::function<void(double seconds)> onSeek);
  ~TimeBar();
  TimeBar(const TimeBar&) = delete;
  TimeBar& operator=(const TimeBar&) = delete;

  void Place(const PixelArea& area);
  void Show(State state);

 private:
  static LRESULT CALLBACK Procedure(HWND hwnd, UINT message, WPARAM wide, LPARAM packed);
  void Paint();
  void PaintOn(HDC dc, const RECT& client) const;
  void SeekTo(int x) const;

  HWND m_hwnd = nullptr;
  std::function<void(double)> m_onSeek;
  State m_state;
};
