// SPDX-License-Identifier: MIT
#include "roads/bench_window.h"

namespace {

constexpr wchar_t kClassName[] = L"nivral bench window";
// Room for the frames, which the SDL backend wants to find where a window may be resized.
constexpr int kColumnWidth = kPaneWidth + 8;
constexpr int kRowHeight = kPaneHeight + 8;
constexpr DWORD kStyle = WS_POPUP | WS_THICKFRAME;

void RegisterOnce() {
  WNDCLASSW windowClass{};
  windowClass.lpfnWndProc = &DefWindowProcW;
  windowClass.hInstance = GetModuleHandleW(nullptr);
  windowClass.lpszClassName = kClassName;
  RegisterClassW(&windowClass);
}

}  // namespace

BenchWindow::BenchWindow(int place) {
  RegisterOnce();
  const int columns = GetSystemMetrics(SM_CXSCREEN) / kColumnWidth;
  const int x = place % columns * kColumnWidth + 4;
  const int y = place / columns * kRowHeight + 4;
  RECT frame{x, y, x + kPaneWidth, y + kPaneHeight};
  AdjustWindowRect(&frame, kStyle, FALSE);
  m_hwnd = CreateWindowExW(0, kClassName, L"", kStyle, frame.left, frame.top, frame.right - frame.left,
                           frame.bottom - frame.top, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
  ShowWindow(m_hwnd, SW_SHOWNOACTIVATE);
  UpdateWindow(m_hwnd);
}

BenchWindow::~BenchWindow() {
  DestroyWindow(m_hwnd);
}
