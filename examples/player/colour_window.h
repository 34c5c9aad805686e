// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <array>
#include <functional>

#include "player/options.h"

/// A small window with a slider each for brightness, contrast, saturation and hue, and a reset button.
class ColourWindow {
 public:
  using Change = std::function<void(const ColourSettings&)>;

  /// Stays hidden at first. Throws std::runtime_error.
  ColourWindow(HWND main, Change onChange);
  ~ColourWindow();
  ColourWindow(const ColourWindow&) = delete;
  ColourWindow& operator=(const ColourWindow&) = delete;

  void Show();
  /// Back over the panes.
  void Raise();
  void SetColours(const ColourSettings& colours);
  /// Whether a message was a key for the sliders.
  bool Takes(MSG& message) { return IsDialogMessageA(m_hwnd, &message) != 0; }

 private:
  static LRESULT CALLBACK Procedure(HWND hwnd, UINT message, WPARAM wide, LPARAM packed);
  void MakeControls();
  void Report() const;

  HWND m_hwnd = nullptr;
  Change m_onChange;
  std::array<HWND, 4> m_sliders{};
};
