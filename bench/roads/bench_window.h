// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

constexpr int kPaneWidth = 320;
constexpr int kPaneHeight = 180;

/// A window whose client area is one of the places of a grid that fills the screen without overlaps.
class BenchWindow {
 public:
  explicit BenchWindow(int place);
  ~BenchWindow();
  BenchWindow(const BenchWindow&) = delete;
  BenchWindow& operator=(const BenchWindow&) = delete;

  HWND Handle() const { return m_hwnd; }

 private:
  HWND m_hwnd;
};
