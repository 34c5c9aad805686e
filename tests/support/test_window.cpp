// SPDX-License-Identifier: MIT
#include "support/test_window.h"

namespace {

constexpr wchar_t kClassName[] = L"nivral test window";

void RegisterOnce() {
  WNDCLASSW windowClass{};
  windowClass.lpfnWndProc = &DefWindowProcW;
  windowClass.hInstance = GetModuleHandleW(nullptr);
  windowClass.hCursor = LoadCursorA(nullptr, IDC_ARROW);
  windowClass.hbrBackground = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
  windowClass.lpszClassName = kClassName;
  RegisterClassW(&windowClass);
}

RECT FrameAround(int x, int y, int width, int height, DWORD style) {
  RECT frame{x, y, x + width, y + height};
  AdjustWindowRect(&frame, style, FALSE);
  return frame;
}

}  // namespace

TestWindow::TestWindow(int width, int height, int x, int y, DWORD style) {
  RegisterOnce();
  const RECT frame = FrameAround(x, y, width, height, style);
  m_hwnd = CreateWindowExW(WS_EX_TOPMOST, kClassName, L"nivral test", style, frame.left, frame.top,
                           frame.right - frame.left, frame.bottom - frame.top, nullptr, nullptr,
                           GetModuleHandleW(nullptr), nullptr);
  ShowWindow(m_hwnd, SW_SHOWNOACTIVATE);
  UpdateWindow(m_hwnd);
  Pump(30);
}

TestWindow::~TestWindow() {
  Destroy();
}

void TestWindow::ResizeClient(int width, int height) {
  const auto style = static_cast<DWORD>(GetWindowLongPtrW(m_hwnd, GWL_STYLE));
  const RECT frame = FrameAround(0, 0, width, height, style);
  SetWindowPos(m_hwnd, nullptr, 0, 0, frame.right - frame.left, frame.bottom - frame.top,
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  Pump();
}

void TestWindow::Destroy() {
  if (m_hwnd) DestroyWindow(m_hwnd);
  m_hwnd = nullptr;
  Pump();
}

void Pump(DWORD ms) {
  const ULONGLONG end = GetTickCount64() + ms;
  for (;;) {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
    const ULONGLONG now = GetTickCount64();
    if (now >= end) return;
    MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(end - now), QS_ALLINPUT);
  }
}
