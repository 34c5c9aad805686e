// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <array>
#include <functional>

#include "player/options.h"
#include "player/windows/layout.h"

/// Beside the panes: a slider with its number each for brightness, contrast, saturation and hue, and a reset
/// button.
class ColourPanel {
 public:
  static constexpr int kWidth = 220;
  using Change = std::function<void(const ColourSettings&)>;

  /// Throws std::runtime_error.
  ColourPanel(HWND main, Change onChange);
  ~ColourPanel();
  ColourPanel(const ColourPanel&) = delete;
  ColourPanel& operator=(const ColourPanel&) = delete;

  /// An area without width: hidden.
  void Place(const PixelArea& area);
  void SetColours(const ColourSettings& colours);

 private:
  static LRESULT CALLBACK Procedure(HWND hwnd, UINT message, WPARAM wide, LPARAM packed);
  void MakeControls();
  void ShowNumbers(const ColourSettings& colours) const;
  ColourSettings Read() const;
  void Report() const;

  HWND m_hwnd = nullptr;
  Change m_onChange;
  std::array<HWND, 4> m_sliders{};
  std::array<HWND, 4> m_labels{};
};
