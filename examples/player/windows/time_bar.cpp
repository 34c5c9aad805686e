// SPDX-License-Identifier: MIT
#include "player/windows/time_bar.h"

#include <windowsx.h>

#include <algorithm>
#include <stdexcept>

#include "player/windows/text.h"

namespace {

constexpr wchar_t kClassName[] = L"nivral_player_time";
constexpr int kMargin = 12;
constexpr int kLineTop = 10;
constexpr int kLineHeight = 6;
constexpr COLORREF kBackground = RGB(32, 32, 36);
constexpr COLORREF kLineColour = RGB(90, 90, 98);
constexpr COLORREF kPassedColour = RGB(255, 150, 30);
constexpr COLORREF kTextColour = RGB(225, 225, 225);

void Fill(HDC dc, const RECT& area, COLORREF colour) {
  HBRUSH brush = CreateSolidBrush(colour);
  FillRect(dc, &area, brush);
  DeleteObject(brush);
}

}  // namespace

TimeBar::TimeBar(HWND main, std::function<void(double)> onSeek) : m_onSeek(std::move(onSeek)) {
  WNDCLASSW windowClass{};
  windowClass.lpfnWndProc = &Procedure;
  windowClass.hInstance = GetModuleHandleW(nullptr);
  windowClass.hCursor = LoadCursor(nullptr, IDC_HAND);
  windowClass.lpszClassName = kClassName;
  RegisterClassW(&windowClass);
  m_hwnd = CreateWindowW(kClassName, L"", WS_CHILD | WS_VISIBLE, 0, 0, 0, 0, main, nullptr,
                         windowClass.hInstance, nullptr);
  if (!m_hwnd) throw std::runtime_error("no window could be made");
  SetWindowLongPtrW(m_hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

TimeBar::~TimeBar() {
  SetWindowLongPtrW(m_hwnd, GWLP_USERDATA, 0);
  DestroyWindow(m_hwnd);
}

void TimeBar::Place(const PixelArea& area) {
  SetWindowPos(m_hwnd, nullptr, area.left, area.top, area.width, area.height,
               SWP_NOZORDER | SWP_NOACTIVATE | (area.height > 0 ? SWP_SHOWWINDOW : SWP_HIDEWINDOW));
  InvalidateRect(m_hwnd, nullptr, FALSE);
}

void TimeBar::Show(State state) {
  if (state == m_state) return;
  m_state = std::move(state);
  InvalidateRect(m_hwnd, nullptr, FALSE);
}

LRESULT CALLBACK TimeBar::Procedure(HWND hwnd, UINT message, WPARAM wide, LPARAM packed) {
  auto* bar = reinterpret_cast<TimeBar*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
  if (!bar) return DefWindowProcW(hwnd, message, wide, packed);
  switch (message) {
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT:
      bar->Paint();
      return 0;
    case WM_LBUTTONDOWN:
      SetCapture(hwnd);
      bar->SeekTo(GET_X_LPARAM(packed));
      return 0;
    case WM_MOUSEMOVE:
      if (GetCapture() == hwnd) bar->SeekTo(GET_X_LPARAM(packed));
      return 0;
    case WM_LBUTTONUP:
      ReleaseCapture();
      return 0;
    default:
      return DefWindowProcW(hwnd, message, wide, packed);
  }
}

/// Into memory first, so that nothing flickers.
void TimeBar::Paint() {
  PAINTSTRUCT paint;
  HDC screen = BeginPaint(m_hwnd, &paint);
  RECT client{};
  GetClientRect(m_hwnd, &client);
  HDC memory = CreateCompatibleDC(screen);
  HBITMAP bitmap = CreateCompatibleBitmap(screen, client.right, client.bottom);
  HGDIOBJ previous = SelectObject(memory, bitmap);
  PaintOn(memory, client);
  BitBlt(screen, 0, 0, client.right, client.bottom, memory, 0, 0, SRCCOPY);
  SelectObject(memory, previous);
  DeleteObject(bitmap);
  DeleteDC(memory);
  EndPaint(m_hwnd, &paint);
}

void TimeBar::PaintOn(HDC dc, const RECT& client) const {
  Fill(dc, client, kBackground);
  const RECT line{kMargin, kLineTop, client.right - kMargin, kLineTop + kLineHeight};
  if (m_state.length > 0) {
    const double share = std::clamp(m_state.position / m_state.length, 0.0, 1.0);
    const int at = line.left + static_cast<int>(share * (line.right - line.left));
    Fill(dc, line, kLineColour);
    Fill(dc, {line.left, line.top, at, line.bottom}, kPassedColour);
    Fill(dc, {at - 3, line.top - 5, at + 3, line.bottom + 5}, kTextColour);
  }
  SelectObject(dc, GetStockObject(DEFAULT_GUI_FONT));
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, kTextColour);
  constexpr UINT kOneLine = DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS;
  RECT text{kMargin, line.bottom + 6, client.right - kMargin, client.bottom};
  const std::wstring left = Wide(m_state.left + "   ");
  DrawTextW(dc, left.c_str(), -1, &text, DT_LEFT | kOneLine);
  RECT taken = text;
  DrawTextW(dc, left.c_str(), -1, &taken, DT_LEFT | kOneLine | DT_CALCRECT);
  text.left = std::min(taken.right, text.right);
  DrawTextW(dc, Wide(m_state.right).c_str(), -1, &text, DT_RIGHT | kOneLine);
}

void TimeBar::SeekTo(int x) const {
  RECT client{};
  GetClientRect(m_hwnd, &client);
  const double width = std::max<double>(client.right - 2 * kMargin, 1);
  if (m_state.length > 0) m_onSeek(std::clamp((x - kMargin) / width, 0.0, 1.0) * m_state.length);
}
