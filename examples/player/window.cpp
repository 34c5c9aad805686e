// SPDX-License-Identifier: MIT
#include "player/window.h"

#include <windowsx.h>

#include <algorithm>
#include <cstdlib>
#include <stdexcept>
#include <utility>

namespace {

constexpr char kClassName[] = "nivral_player_pane";
constexpr DWORD kStyle = WS_OVERLAPPEDWINDOW;

POINT PointOf(LPARAM packed) {
  return {GET_X_LPARAM(packed), GET_Y_LPARAM(packed)};
}

/// The size of a whole window whose client area fits the work area.
SIZE WholeSize(int left, int width, int height) {
  RECT frame{};
  AdjustWindowRect(&frame, kStyle, FALSE);
  RECT work{};
  SystemParametersInfoA(SPI_GETWORKAREA, 0, &work, 0);
  const int borderX = frame.right - frame.left;
  const int borderY = frame.bottom - frame.top;
  const int roomX = std::max<int>(work.right - left - borderX, 64);
  const int roomY = std::max<int>(work.bottom - work.top - borderY, 64);
  const double scale =
      std::min({1.0, static_cast<double>(roomX) / width, static_cast<double>(roomY) / height});
  return {static_cast<int>(width * scale) + borderX, static_cast<int>(height * scale) + borderY};
}

}  // namespace

Window::Window(const char* title, int left, int clientWidth, int clientHeight) {
  WNDCLASSA windowClass{};
  windowClass.lpfnWndProc = &Procedure;
  windowClass.hInstance = GetModuleHandleA(nullptr);
  windowClass.hCursor = LoadCursor(nullptr, IDC_ARROW);
  windowClass.lpszClassName = kClassName;
  RegisterClassA(&windowClass);  // fails harmlessly for the second window
  const SIZE size = WholeSize(left, clientWidth, clientHeight);
  m_hwnd = CreateWindowA(kClassName, title, kStyle, left, 0, size.cx, size.cy, nullptr, nullptr,
                         windowClass.hInstance, nullptr);
  if (!m_hwnd) throw std::runtime_error("no window could be made");
  SetWindowLongPtrA(m_hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  ShowWindow(m_hwnd, SW_SHOW);
}

Window::~Window() {
  SetWindowLongPtrA(m_hwnd, GWLP_USERDATA, 0);
  DestroyWindow(m_hwnd);
}

RECT Window::Frame() const {
  RECT frame{};
  GetWindowRect(m_hwnd, &frame);
  return frame;
}

SIZE Window::ClientSize() const {
  RECT client{};
  GetClientRect(m_hwnd, &client);
  return {client.right, client.bottom};
}

LRESULT CALLBACK Window::Procedure(HWND hwnd, UINT message, WPARAM wide, LPARAM packed) {
  if (message == WM_ERASEBKGND) return 1;  // the pane covers it all
  auto* window = reinterpret_cast<Window*>(GetWindowLongPtrA(hwnd, GWLP_USERDATA));
  if (window && window->m_events && window->Handle(message, wide, packed)) return 0;
  return DefWindowProcA(hwnd, message, wide, packed);
}

bool Window::Handle(UINT message, WPARAM wide, LPARAM packed) {
  switch (message) {
    case WM_SIZE:
      if (wide != SIZE_MINIMIZED) m_events->OnSize();
      return true;
    case WM_KEYDOWN:
      m_events->OnKey(static_cast<int>(wide));
      return true;
    case WM_MOUSEWHEEL: {
      POINT at = PointOf(packed);
      ScreenToClient(m_hwnd, &at);
      m_events->OnWheel(GET_WHEEL_DELTA_WPARAM(wide) > 0 ? 1 : -1, at);
      return true;
    }
    case WM_LBUTTONDOWN:
      m_dragStart = PointOf(packed);
      m_dragging = true;
      SetCapture(m_hwnd);
      return true;
    case WM_LBUTTONUP:
      EndDrag(PointOf(packed));
      return true;
    case WM_CLOSE:
      m_events->OnClose();
      return true;
    default:
      return false;
  }
}

void Window::EndDrag(POINT at) {
  constexpr int kLeastDrag = 8;
  ReleaseCapture();
  if (!std::exchange(m_dragging, false)) return;
  const RECT area{std::min(at.x, m_dragStart.x), std::min(at.y, m_dragStart.y), std::max(at.x, m_dragStart.x),
                  std::max(at.y, m_dragStart.y)};
  if (area.right - area.left >= kLeastDrag && area.bottom - area.top >= kLeastDrag) m_events->OnDrag(area);
}

void PumpMessages(DWORD ms) {
  const ULONGLONG end = GetTickCount64() + ms;
  for (;;) {
    for (MSG message; PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);)
      DispatchMessageA(&message);
    const ULONGLONG now = GetTickCount64();
    if (now >= end) return;
    MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(end - now), QS_ALLINPUT);
  }
}
