// SPDX-License-Identifier: MIT
#include "player/main_window.h"

#include <windowsx.h>

#include <algorithm>
#include <stdexcept>

namespace {

constexpr char kClassName[] = "nivral_player";
constexpr UINT_PTR kRaiseTimer = 1;
constexpr UINT kRaiseAfterMs = 100;
constexpr DWORD kStyle = WS_OVERLAPPEDWINDOW;

}  // namespace

MainWindow::MainWindow() {
  WNDCLASSA windowClass{};
  windowClass.lpfnWndProc = &Procedure;
  windowClass.hInstance = GetModuleHandleA(nullptr);
  windowClass.hCursor = LoadCursor(nullptr, IDC_ARROW);
  windowClass.hbrBackground = static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH));
  windowClass.lpszClassName = kClassName;
  RegisterClassA(&windowClass);
  m_hwnd = CreateWindowA(kClassName, "libnivral player", kStyle, 0, 0, 640, 480, nullptr, MakeMenu(),
                         windowClass.hInstance, nullptr);
  if (!m_hwnd) throw std::runtime_error("no window could be made");
  SetWindowLongPtrA(m_hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

MainWindow::~MainWindow() {
  SetWindowLongPtrA(m_hwnd, GWLP_USERDATA, 0);
  DestroyWindow(m_hwnd);
}

void MainWindow::Show(PixelSize client) {
  RECT frame{};
  AdjustWindowRect(&frame, kStyle, TRUE);
  RECT work{};
  SystemParametersInfoA(SPI_GETWORKAREA, 0, &work, 0);
  const int borderX = frame.right - frame.left;
  const int borderY = frame.bottom - frame.top;
  PixelSize size = client;
  if (size.width > work.right - borderX || size.height > work.bottom - borderY) {
    const PixelArea room{0, 0, std::max<int>(work.right - borderX, 64),
                         std::max<int>(work.bottom - borderY, 64)};
    const PixelArea fitting = FitInto(room, client);
    size = {fitting.width, fitting.height};
  }
  SetWindowPos(m_hwnd, nullptr, 0, 0, size.width + borderX, size.height + borderY, SWP_NOZORDER | SWP_NOMOVE);
  ShowWindow(m_hwnd, SW_SHOW);
}

void MainWindow::Mark(const PixelArea& area) {
  constexpr int kThickness = 2;
  m_mark = {};
  if (area.width > 0)
    m_mark = {area.left - kThickness, area.top - kThickness, area.left + area.width + kThickness,
              area.top + area.height + kThickness};
  InvalidateRect(m_hwnd, nullptr, TRUE);
}

PixelSize MainWindow::Size() const {
  RECT client{};
  GetClientRect(m_hwnd, &client);
  return {client.right, client.bottom};
}

LRESULT CALLBACK MainWindow::Procedure(HWND hwnd, UINT message, WPARAM wide, LPARAM packed) {
  auto* window = reinterpret_cast<MainWindow*>(GetWindowLongPtrA(hwnd, GWLP_USERDATA));
  if (window && window->m_events && window->Handle(message, wide, packed)) return 0;
  return DefWindowProcA(hwnd, message, wide, packed);
}

bool MainWindow::Handle(UINT message, WPARAM wide, LPARAM packed) {
  switch (message) {
    case WM_MOVE:
    case WM_SIZE:
      if (!IsIconic(m_hwnd)) m_events->OnArrange();
      return true;
    case WM_ACTIVATE:
      // Wine raises the window over the windows it owns, and that later than this.
      SetTimer(m_hwnd, kRaiseTimer, kRaiseAfterMs, nullptr);
      return false;
    case WM_TIMER:
      KillTimer(m_hwnd, wide);
      m_events->OnRaise();
      return true;
    case WM_PAINT:
      Paint();
      return true;
    case WM_MOUSEWHEEL:
      PassWheelOn(wide, packed);
      return true;
    case WM_COMMAND:
      m_events->OnCommand(static_cast<Command>(LOWORD(wide)));
      return true;
    case WM_INITMENU:
      m_events->OnMenu(reinterpret_cast<HMENU>(wide));
      return true;
    case WM_CLOSE:
      m_events->OnCommand(kCommandExit);
      return true;
    default:
      return false;
  }
}

void MainWindow::Paint() const {
  PAINTSTRUCT paint;
  HDC dc = BeginPaint(m_hwnd, &paint);
  FillRect(dc, &m_mark, static_cast<HBRUSH>(GetStockObject(LTGRAY_BRUSH)));
  EndPaint(m_hwnd, &paint);
}

/// The wheel turns in the window with the focus, which may not be the one under the pointer.
void MainWindow::PassWheelOn(WPARAM wide, LPARAM packed) const {
  HWND under = WindowFromPoint({GET_X_LPARAM(packed), GET_Y_LPARAM(packed)});
  if (GetWindow(under, GW_OWNER) == m_hwnd) SendMessageA(under, WM_MOUSEWHEEL, wide, packed);
}

void PumpMessages(DWORD ms, const std::function<bool(MSG&)>& takes) {
  const ULONGLONG end = GetTickCount64() + ms;
  for (;;) {
    for (MSG message; PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE);) {
      if (takes(message)) continue;
      TranslateMessage(&message);
      DispatchMessageA(&message);
    }
    const ULONGLONG now = GetTickCount64();
    if (now >= end) return;
    MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(end - now), QS_ALLINPUT);
  }
}
