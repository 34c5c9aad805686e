// SPDX-License-Identifier: MIT
#include "player/pane_window.h"

#include <windowsx.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace {

constexpr char kClassName[] = "nivral_player_pane";

POINT PointOf(LPARAM packed) {
  return {GET_X_LPARAM(packed), GET_Y_LPARAM(packed)};
}

}  // namespace

// An owned window instead of a child: Wine shows nothing of what graphics interfaces present in child
// windows. The thick frame, which WM_NCCALCSIZE hides, keeps SDL from holding the window at its first size.
// It begins in the picture's own size, because Wine's Direct3D 9 never fills more of a frame than fits the
// window it began with.
PaneWindow::PaneWindow(HWND main, PixelSize picture) {
  WNDCLASSA windowClass{};
  windowClass.lpfnWndProc = &Procedure;
  windowClass.hInstance = GetModuleHandleA(nullptr);
  windowClass.hCursor = LoadCursor(nullptr, IDC_ARROW);
  windowClass.lpszClassName = kClassName;
  RegisterClassA(&windowClass);  // fails harmlessly for the second window
  POINT origin{0, 0};
  ClientToScreen(main, &origin);
  m_hwnd = CreateWindowExA(WS_EX_NOACTIVATE, kClassName, "", WS_POPUP | WS_THICKFRAME, origin.x, origin.y,
                           picture.width, picture.height, main, nullptr, windowClass.hInstance, nullptr);
  if (!m_hwnd) throw std::runtime_error("no window could be made");
  SetWindowLongPtrA(m_hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

PaneWindow::~PaneWindow() {
  SetWindowLongPtrA(m_hwnd, GWLP_USERDATA, 0);
  DestroyWindow(m_hwnd);
}

void PaneWindow::Place(const PixelArea& area) {
  POINT corner{area.left, area.top};
  ClientToScreen(GetWindow(m_hwnd, GW_OWNER), &corner);
  SetWindowPos(m_hwnd, nullptr, corner.x, corner.y, area.width, area.height,
               SWP_NOACTIVATE | SWP_NOZORDER | SWP_SHOWWINDOW);
}

void PaneWindow::Hide() {
  ShowWindow(m_hwnd, SW_HIDE);
}

PixelSize PaneWindow::Size() const {
  RECT client{};
  GetClientRect(m_hwnd, &client);
  return {std::max<int>(client.right, 1), std::max<int>(client.bottom, 1)};
}

LRESULT CALLBACK PaneWindow::Procedure(HWND hwnd, UINT message, WPARAM wide, LPARAM packed) {
  if (message == WM_ERASEBKGND) return 1;  // the pane covers it all
  if (message == WM_NCCALCSIZE) return 0;  // no frame
  if (message == WM_NCHITTEST) return HTCLIENT;
  if (message == WM_MOUSEACTIVATE) return MA_NOACTIVATE;
  auto* window = reinterpret_cast<PaneWindow*>(GetWindowLongPtrA(hwnd, GWLP_USERDATA));
  if (window && window->m_events && window->Handle(message, wide, packed)) return 0;
  return DefWindowProcA(hwnd, message, wide, packed);
}

bool PaneWindow::Handle(UINT message, WPARAM wide, LPARAM packed) {
  switch (message) {
    case WM_SIZE:
      if (wide != SIZE_MINIMIZED) m_events->OnSize();
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
      m_events->OnSelect();
      return true;
    case WM_LBUTTONUP:
      EndDrag(PointOf(packed));
      return true;
    default:
      return false;
  }
}

void PaneWindow::EndDrag(POINT at) {
  constexpr int kLeastDrag = 8;
  ReleaseCapture();
  if (!std::exchange(m_dragging, false)) return;
  const RECT area{std::min(at.x, m_dragStart.x), std::min(at.y, m_dragStart.y), std::max(at.x, m_dragStart.x),
                  std::max(at.y, m_dragStart.y)};
  if (area.right - area.left >= kLeastDrag && area.bottom - area.top >= kLeastDrag) m_events->OnDrag(area);
}

// Wine may believe the window on top when the display does not, and would skip a single step.
void RaiseOwned(HWND window) {
  for (HWND level : {HWND_TOPMOST, HWND_NOTOPMOST})
    SetWindowPos(window, level, 0, 0, 0, 0, SWP_NOACTIVATE | SWP_NOMOVE | SWP_NOSIZE);
}
