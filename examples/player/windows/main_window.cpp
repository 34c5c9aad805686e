// SPDX-License-Identifier: MIT
#include "player/windows/main_window.h"

#include <shellapi.h>
#include <windowsx.h>

#include <algorithm>
#include <stdexcept>

#include "player/resource.h"
#include "player/windows/text.h"

namespace {

constexpr wchar_t kClassName[] = L"nivral_player";
constexpr UINT_PTR kTickTimer = 1;
constexpr UINT kTickMs = 15;
constexpr UINT_PTR kRaiseTimer = 2;
constexpr UINT kRaiseAfterMs = 100;
constexpr DWORD kStyle = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
constexpr COLORREF kMarkColour = RGB(255, 150, 30);

}  // namespace

MainWindow::MainWindow() : m_menu(MakeMenu()) {
  WNDCLASSW windowClass{};
  windowClass.lpfnWndProc = &Procedure;
  windowClass.hInstance = GetModuleHandleW(nullptr);
  windowClass.hCursor = LoadCursor(nullptr, IDC_ARROW);
  windowClass.hIcon = LoadIconW(windowClass.hInstance, MAKEINTRESOURCEW(PLAYER_ICON));
  windowClass.hbrBackground = static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH));
  windowClass.lpszClassName = kClassName;
  RegisterClassW(&windowClass);
  m_hwnd = CreateWindowExW(WS_EX_ACCEPTFILES, kClassName, L"libnivral player", kStyle, CW_USEDEFAULT, 0, 640,
                           480, nullptr, m_menu, windowClass.hInstance, nullptr);
  if (!m_hwnd) throw std::runtime_error("no window could be made");
  SetWindowLongPtrW(m_hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

MainWindow::~MainWindow() {
  SetWindowLongPtrW(m_hwnd, GWLP_USERDATA, 0);
  SetMenu(m_hwnd, nullptr);
  DestroyMenu(m_menu);
  DestroyWindow(m_hwnd);
}

void MainWindow::Show(PixelSize client) {
  constexpr PixelSize kSmallest{320, 280};  // the menu's two lines and the time bar leave little of it
  RECT frame{};
  AdjustWindowRect(&frame, kStyle, TRUE);
  RECT work{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  const int borderX = frame.right - frame.left;
  const int borderY = frame.bottom - frame.top;
  PixelSize size = client;
  if (size.width > work.right - borderX || size.height > work.bottom - borderY) {
    const PixelArea room{0, 0, std::max<int>(work.right - borderX, 64),
                         std::max<int>(work.bottom - borderY, 64)};
    const PixelArea fitting = FitInto(room, client);
    size = {fitting.width, fitting.height};
  }
  size = {std::max(size.width, kSmallest.width), std::max(size.height, kSmallest.height)};
  SetWindowPos(m_hwnd, nullptr, 0, 0, size.width + borderX, size.height + borderY, SWP_NOZORDER);
  ShowWindow(m_hwnd, SW_SHOW);
}

void MainWindow::Show(const WINDOWPLACEMENT& placement) {
  WINDOWPLACEMENT shown = placement;
  if (shown.showCmd != SW_SHOWMAXIMIZED) shown.showCmd = SW_SHOWNORMAL;
  if (!MonitorFromRect(&shown.rcNormalPosition, MONITOR_DEFAULTTONULL))
    OffsetRect(&shown.rcNormalPosition, -shown.rcNormalPosition.left, -shown.rcNormalPosition.top);
  SetWindowPlacement(m_hwnd, &shown);
}

WINDOWPLACEMENT MainWindow::Placement() const {
  if (m_isFullScreen) return m_beforeFullScreen;
  WINDOWPLACEMENT placement{};
  placement.length = sizeof(placement);
  GetWindowPlacement(m_hwnd, &placement);
  return placement;
}

void MainWindow::SetFullScreen(bool full) {
  if (full == m_isFullScreen) return;
  if (full) m_beforeFullScreen = Placement();
  m_isFullScreen = full;
  SetWindowLongPtrW(m_hwnd, GWL_STYLE, (full ? WS_POPUP | WS_CLIPCHILDREN : kStyle) | WS_VISIBLE);
  SetMenu(m_hwnd, full ? nullptr : m_menu);
  if (!full) {
    SetWindowPlacement(m_hwnd, &m_beforeFullScreen);
    SetWindowPos(m_hwnd, nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_FRAMECHANGED);
    return;
  }
  MONITORINFO monitor{};
  monitor.cbSize = sizeof(monitor);
  GetMonitorInfoW(MonitorFromWindow(m_hwnd, MONITOR_DEFAULTTONEAREST), &monitor);
  const RECT& all = monitor.rcMonitor;
  SetWindowPos(m_hwnd, HWND_TOP, all.left, all.top, all.right - all.left, all.bottom - all.top,
               SWP_FRAMECHANGED);
}

void MainWindow::SetTitle(const std::string& title) {
  SetWindowTextW(m_hwnd, Wide(title).c_str());
}

void MainWindow::Mark(const PixelArea& area) {
  constexpr int kThickness = 3;
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
  auto* window = reinterpret_cast<MainWindow*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
  if (window && window->m_events && window->Handle(message, wide, packed)) return 0;
  return DefWindowProcW(hwnd, message, wide, packed);
}

bool MainWindow::Handle(UINT message, WPARAM wide, LPARAM packed) {
  switch (message) {
    case WM_MOVE:
    case WM_SIZE:
      if (!IsIconic(m_hwnd)) m_events->OnArrange();
      return true;
    case WM_ACTIVATE:
    case WM_MOUSEACTIVATE:
    case WM_SETFOCUS:
      // Wine raises the window over the windows it owns, and that later than this.
      SetTimer(m_hwnd, kRaiseTimer, kRaiseAfterMs, nullptr);
      return false;
    case WM_ENTERMENULOOP:
    case WM_EXITMENULOOP:
      m_isMenuOpen = message == WM_ENTERMENULOOP;
      return false;
    case WM_TIMER:
      OnTimer(wide);
      return true;
    case WM_PAINT:
      Paint();
      return true;
    case WM_MOUSEWHEEL:
      PassWheelOn(wide, packed);
      return true;
    case WM_DROPFILES:
      m_events->OnDrop(DroppedFiles(wide));
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

void MainWindow::StartTicks() {
  SetTimer(m_hwnd, kTickTimer, kTickMs, nullptr);
}

void MainWindow::OnTimer(UINT_PTR timer) {
  if (timer == kTickTimer) return m_events->OnTick();
  if (m_isMenuOpen) return;  // nor may panes cover the menu
  KillTimer(m_hwnd, timer);
  m_events->OnRaise();
}

void MainWindow::Paint() const {
  PAINTSTRUCT paint;
  HDC dc = BeginPaint(m_hwnd, &paint);
  HBRUSH brush = CreateSolidBrush(kMarkColour);
  FillRect(dc, &m_mark, brush);
  DeleteObject(brush);
  EndPaint(m_hwnd, &paint);
}

/// The wheel turns in the window with the focus, which may not be the one under the pointer.
void MainWindow::PassWheelOn(WPARAM wide, LPARAM packed) const {
  HWND under = WindowFromPoint({GET_X_LPARAM(packed), GET_Y_LPARAM(packed)});
  if (GetWindow(under, GW_OWNER) == m_hwnd) SendMessageW(under, WM_MOUSEWHEEL, wide, packed);
}

std::vector<std::string> DroppedFiles(WPARAM wide) {
  auto* drop = reinterpret_cast<HDROP>(wide);
  std::vector<std::string> paths;
  const UINT count = DragQueryFileW(drop, ~0u, nullptr, 0);
  for (UINT i = 0; i < count; ++i) {
    std::wstring path(DragQueryFileW(drop, i, nullptr, 0) + 1, L'\0');
    path.resize(DragQueryFileW(drop, i, path.data(), static_cast<UINT>(path.size())));
    paths.push_back(Utf8(path));
  }
  DragFinish(drop);
  return paths;
}

void PumpMessages(DWORD ms, const std::function<bool(MSG&)>& takes) {
  const ULONGLONG end = GetTickCount64() + ms;
  for (;;) {
    for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);) {
      if (takes(message)) continue;
      TranslateMessage(&message);
      DispatchMessageW(&message);
    }
    const ULONGLONG now = GetTickCount64();
    if (now >= end) return;
    MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(end - now), QS_ALLINPUT);
  }
}
