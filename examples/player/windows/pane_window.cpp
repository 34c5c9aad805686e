// SPDX-License-Identifier: MIT
#include "player/windows/pane_window.h"

#include <windowsx.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "player/embed/pane.h"
#include "player/windows/main_window.h"

namespace {

constexpr wchar_t kClassName[] = L"nivral_player_pane";
constexpr wchar_t kFrameClassName[] = L"nivral_player_frame";
constexpr COLORREF kFrameColour = RGB(255, 150, 30);

POINT PointOf(LPARAM packed) {
  return {GET_X_LPARAM(packed), GET_Y_LPARAM(packed)};
}

}  // namespace

// An owned window instead of a child: Wine shows nothing of what graphics interfaces present in child
// windows. It begins in the picture's own size, because Wine's Direct3D 9 never fills more of a frame than
// fits the window it began with.
PaneWindow::PaneWindow(HWND main, PixelSize picture) {
  WNDCLASSW windowClass{};
  windowClass.style = CS_DBLCLKS;
  windowClass.lpfnWndProc = &Procedure;
  windowClass.hInstance = GetModuleHandleW(nullptr);
  windowClass.hCursor = LoadCursor(nullptr, IDC_ARROW);
  windowClass.lpszClassName = kClassName;
  RegisterClassW(&windowClass);  // fails harmlessly for the second window
  POINT origin{0, 0};
  ClientToScreen(main, &origin);
  m_hwnd =
      CreateWindowExW(WS_EX_NOACTIVATE | WS_EX_ACCEPTFILES, kClassName, L"", WS_POPUP, origin.x, origin.y,
                      picture.width, picture.height, main, nullptr, windowClass.hInstance, nullptr);
  if (!m_hwnd) throw std::runtime_error("no window could be made");
  SetWindowLongPtrW(m_hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

PaneWindow::~PaneWindow() {
  SetWindowLongPtrW(m_hwnd, GWLP_USERDATA, 0);
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
  if (message == WM_MOUSEACTIVATE) return MA_NOACTIVATE;
  auto* window = reinterpret_cast<PaneWindow*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
  if (window && window->m_events && window->Handle(message, wide, packed)) return 0;
  return DefWindowProcW(hwnd, message, wide, packed);
}

bool PaneWindow::Handle(UINT message, WPARAM wide, LPARAM packed) {
  switch (message) {
    case WM_SIZE:
      if (wide != SIZE_MINIMIZED) m_events->OnSize();
      return true;
    case kNewVideoSize:
      m_events->OnNewVideoSize(static_cast<int>(wide), static_cast<int>(packed));
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
    case WM_MOUSEMOVE:
      if (m_dragging) {
        RECT area = DraggedTo(PointOf(packed));
        MapWindowPoints(m_hwnd, nullptr, reinterpret_cast<POINT*>(&area), 2);
        if (!m_frame) m_frame = std::make_unique<DragFrame>(GetWindow(m_hwnd, GW_OWNER));
        m_frame->Show(area);
      }
      return true;
    case WM_LBUTTONUP:
      EndDrag(PointOf(packed));
      return true;
    case WM_LBUTTONDBLCLK:
      m_events->OnDoubleClick();
      return true;
    case WM_DROPFILES:
      m_events->OnDrop(DroppedFiles(wide));
      return true;
    default:
      return false;
  }
}

/// Inside the window.
RECT PaneWindow::DraggedTo(POINT at) const {
  const PixelSize size = Size();
  const LONG x = std::clamp<LONG>(at.x, 0, size.width);
  const LONG y = std::clamp<LONG>(at.y, 0, size.height);
  return {std::min(x, m_dragStart.x), std::min(y, m_dragStart.y), std::max(x, m_dragStart.x),
          std::max(y, m_dragStart.y)};
}

void PaneWindow::EndDrag(POINT at) {
  constexpr int kLeastDrag = 8;
  ReleaseCapture();
  m_frame.reset();
  if (!std::exchange(m_dragging, false)) return;
  const RECT area = DraggedTo(at);
  if (area.right - area.left >= kLeastDrag && area.bottom - area.top >= kLeastDrag) m_events->OnDrag(area);
}

DragFrame::DragFrame(HWND owner) {
  WNDCLASSW windowClass{};
  windowClass.lpfnWndProc = DefWindowProcW;
  windowClass.hInstance = GetModuleHandleW(nullptr);
  windowClass.hbrBackground = CreateSolidBrush(kFrameColour);
  windowClass.lpszClassName = kFrameClassName;
  if (RegisterClassW(&windowClass) == 0) DeleteObject(windowClass.hbrBackground);
  m_hwnd = CreateWindowExW(WS_EX_NOACTIVATE | WS_EX_TRANSPARENT, kFrameClassName, L"", WS_POPUP, 0, 0, 0, 0,
                           owner, nullptr, windowClass.hInstance, nullptr);
}

DragFrame::~DragFrame() {
  DestroyWindow(m_hwnd);
}

void DragFrame::Show(const RECT& area) {
  constexpr int kThickness = 2;
  const int width = area.right - area.left;
  const int height = area.bottom - area.top;
  HRGN frame = CreateRectRgn(0, 0, width, height);
  HRGN inside = CreateRectRgn(kThickness, kThickness, width - kThickness, height - kThickness);
  if (width > 2 * kThickness && height > 2 * kThickness) CombineRgn(frame, frame, inside, RGN_DIFF);
  DeleteObject(inside);
  SetWindowPos(m_hwnd, HWND_TOP, area.left, area.top, width, height, SWP_NOACTIVATE | SWP_SHOWWINDOW);
  SetWindowRgn(m_hwnd, frame, TRUE);  // which owns it now
}

// Wine may believe the window on top when the display does not, and would skip a single step.
void RaiseOwned(HWND window) {
  for (HWND level : {HWND_TOPMOST, HWND_NOTOPMOST, HWND_TOP})
    SetWindowPos(window, level, 0, 0, 0, 0, SWP_NOACTIVATE | SWP_NOMOVE | SWP_NOSIZE);
}
