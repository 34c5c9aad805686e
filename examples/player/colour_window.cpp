// SPDX-License-Identifier: MIT
#include "player/colour_window.h"

#include <commctrl.h>

#include <cstdint>
#include <stdexcept>

#include "player/library.h"
#include "player/pane_window.h"

namespace {

constexpr char kClassName[] = "nivral_player_colours";
constexpr DWORD kStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU;
constexpr int kWidth = 340, kRow = 36, kMargin = 8, kLabelWidth = 80;
constexpr WORD kResetButton = 1;
constexpr const char* kLabels[] = {"Brightness", "Contrast", "Saturation", "Hue"};
constexpr int ColourSettings::*kValues[] = {&ColourSettings::brightness, &ColourSettings::contrast,
                                            &ColourSettings::saturation, &ColourSettings::hue};

struct Range {
  int32_t low;
  int32_t high;
};

std::array<Range, 4> Ranges() {
  std::array<Range, 4> r{};
  nivral.GetColorParamsRange(&r[0].low, &r[0].high, &r[1].low, &r[1].high, &r[2].low, &r[2].high, &r[3].low,
                             &r[3].high);
  return r;
}

}  // namespace

ColourWindow::ColourWindow(HWND main, Change onChange) : m_onChange(std::move(onChange)) {
  const INITCOMMONCONTROLSEX controls{sizeof(controls), ICC_BAR_CLASSES};
  InitCommonControlsEx(&controls);
  WNDCLASSA windowClass{};
  windowClass.lpfnWndProc = &Procedure;
  windowClass.hInstance = GetModuleHandleA(nullptr);
  windowClass.hCursor = LoadCursor(nullptr, IDC_ARROW);
  windowClass.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
  windowClass.lpszClassName = kClassName;
  RegisterClassA(&windowClass);
  RECT frame{0, 0, kWidth, 5 * kRow + 2 * kMargin};
  AdjustWindowRect(&frame, kStyle, FALSE);
  m_hwnd = CreateWindowA(kClassName, "Colours", kStyle, 60, 120, frame.right - frame.left,
                         frame.bottom - frame.top, main, nullptr, windowClass.hInstance, nullptr);
  if (!m_hwnd) throw std::runtime_error("no window could be made");
  SetWindowLongPtrA(m_hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  MakeControls();
}

ColourWindow::~ColourWindow() {
  SetWindowLongPtrA(m_hwnd, GWLP_USERDATA, 0);
  DestroyWindow(m_hwnd);
}

void ColourWindow::MakeControls() {
  const std::array<Range, 4> ranges = Ranges();
  int top = kMargin;
  for (size_t i = 0; i < m_sliders.size(); ++i, top += kRow) {
    CreateWindowA("STATIC", kLabels[i], WS_CHILD | WS_VISIBLE, kMargin, top + 6, kLabelWidth, 20, m_hwnd,
                  nullptr, nullptr, nullptr);
    m_sliders[i] = CreateWindowA(TRACKBAR_CLASSA, "", WS_CHILD | WS_VISIBLE | WS_TABSTOP | TBS_NOTICKS,
                                 kMargin + kLabelWidth, top, kWidth - 2 * kMargin - kLabelWidth, kRow - 4,
                                 m_hwnd, nullptr, nullptr, nullptr);
    SendMessageA(m_sliders[i], TBM_SETRANGEMIN, FALSE, ranges[i].low);
    SendMessageA(m_sliders[i], TBM_SETRANGEMAX, FALSE, ranges[i].high);
    SendMessageA(m_sliders[i], TBM_SETPOS, FALSE, ranges[i].low);  // or 0 would be no change and not be shown
  }
  CreateWindowA("BUTTON", "Reset", WS_CHILD | WS_VISIBLE | WS_TABSTOP, kMargin + kLabelWidth, top, 80, 26,
                m_hwnd, reinterpret_cast<HMENU>(UINT_PTR{kResetButton}), nullptr, nullptr);
}

void ColourWindow::Show() {
  ShowWindow(m_hwnd, SW_SHOW);
  Raise();
}

void ColourWindow::SetColours(const ColourSettings& colours) {
  for (size_t i = 0; i < m_sliders.size(); ++i) {
    SendMessageA(m_sliders[i], TBM_SETPOS, TRUE, colours.*kValues[i]);
    InvalidateRect(m_sliders[i], nullptr, TRUE);
  }
}

void ColourWindow::Raise() {
  if (IsWindowVisible(m_hwnd)) RaiseOwned(m_hwnd);
}

void ColourWindow::Report() const {
  ColourSettings colours;
  for (size_t i = 0; i < m_sliders.size(); ++i)
    colours.*kValues[i] = static_cast<int>(SendMessageA(m_sliders[i], TBM_GETPOS, 0, 0));
  m_onChange(colours);
}

LRESULT CALLBACK ColourWindow::Procedure(HWND hwnd, UINT message, WPARAM wide, LPARAM packed) {
  auto* window = reinterpret_cast<ColourWindow*>(GetWindowLongPtrA(hwnd, GWLP_USERDATA));
  if (window && message == WM_HSCROLL) {
    window->Report();
    return 0;
  }
  if (window && message == WM_COMMAND && LOWORD(wide) == kResetButton) {
    window->SetColours({});
    window->Report();
    return 0;
  }
  if (message == WM_CLOSE || (message == WM_COMMAND && LOWORD(wide) == IDCANCEL)) {
    ShowWindow(hwnd, SW_HIDE);
    return 0;
  }
  return DefWindowProcA(hwnd, message, wide, packed);
}
