// SPDX-License-Identifier: MIT
#include "player/windows/colour_panel.h"

#include <commctrl.h>

#include <nivral/nivral.hpp>
#include <stdexcept>
#include <string>

namespace {

constexpr wchar_t kClassName[] = L"nivral_player_colours";
constexpr int kMargin = 10, kLabelHeight = 18, kSliderHeight = 32, kRow = kLabelHeight + kSliderHeight + 6;
constexpr WORD kResetButton = 1;
constexpr const wchar_t* kNames[] = {L"Brightness", L"Contrast", L"Saturation", L"Hue"};
constexpr int ColourSettings::*kValues[] = {&ColourSettings::brightness, &ColourSettings::contrast,
                                            &ColourSettings::saturation, &ColourSettings::hue};

}  // namespace

ColourPanel::ColourPanel(HWND main, Change onChange) : m_onChange(std::move(onChange)) {
  const INITCOMMONCONTROLSEX controls{sizeof(controls), ICC_BAR_CLASSES};
  InitCommonControlsEx(&controls);
  WNDCLASSW windowClass{};
  windowClass.lpfnWndProc = &Procedure;
  windowClass.hInstance = GetModuleHandleW(nullptr);
  windowClass.hCursor = LoadCursor(nullptr, IDC_ARROW);
  windowClass.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
  windowClass.lpszClassName = kClassName;
  RegisterClassW(&windowClass);
  m_hwnd = CreateWindowW(kClassName, L"", WS_CHILD | WS_CLIPCHILDREN, 0, 0, kWidth, 0, main, nullptr,
                         windowClass.hInstance, nullptr);
  if (!m_hwnd) throw std::runtime_error("no window could be made");
  SetWindowLongPtrW(m_hwnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  MakeControls();
}

ColourPanel::~ColourPanel() {
  SetWindowLongPtrW(m_hwnd, GWLP_USERDATA, 0);
  DestroyWindow(m_hwnd);
}

void ColourPanel::MakeControls() {
  const nivral::ColorRange limits = nivral::Display::ColorLimits();
  const auto make = [this](const wchar_t* kind, const wchar_t* text, DWORD style, int top, int height,
                           WORD id) {
    HWND control =
        CreateWindowW(kind, text, WS_CHILD | WS_VISIBLE | style, kMargin, top, kWidth - 2 * kMargin, height,
                      m_hwnd, reinterpret_cast<HMENU>(UINT_PTR{id}), nullptr, nullptr);
    SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)), FALSE);
    return control;
  };
  const int32_t lowest[] = {limits.lowest.brightness, limits.lowest.contrast, limits.lowest.saturation,
                            limits.lowest.hue};
  const int32_t highest[] = {limits.highest.brightness, limits.highest.contrast, limits.highest.saturation,
                             limits.highest.hue};
  int top = kMargin;
  for (size_t i = 0; i < m_sliders.size(); ++i, top += kRow) {
    m_labels[i] = make(L"STATIC", kNames[i], 0, top, kLabelHeight, 0);
    m_sliders[i] = make(TRACKBAR_CLASSW, L"", TBS_NOTICKS, top + kLabelHeight, kSliderHeight, 0);
    SendMessageW(m_sliders[i], TBM_SETRANGEMIN, FALSE, lowest[i]);
    SendMessageW(m_sliders[i], TBM_SETRANGEMAX, FALSE, highest[i]);
    SendMessageW(m_sliders[i], TBM_SETPOS, FALSE, lowest[i]);  // or 0 would be no change and not be shown
  }
  make(L"BUTTON", L"Reset", 0, top, 26, kResetButton);
}

void ColourPanel::Place(const PixelArea& area) {
  SetWindowPos(m_hwnd, nullptr, area.left, area.top, area.width, area.height,
               SWP_NOZORDER | SWP_NOACTIVATE | (area.width > 0 ? SWP_SHOWWINDOW : SWP_HIDEWINDOW));
}

void ColourPanel::SetColours(const ColourSettings& colours) {
  for (size_t i = 0; i < m_sliders.size(); ++i) {
    SendMessageW(m_sliders[i], TBM_SETPOS, TRUE, colours.*kValues[i]);
    InvalidateRect(m_sliders[i], nullptr, TRUE);
  }
  ShowNumbers(colours);
}

void ColourPanel::ShowNumbers(const ColourSettings& colours) const {
  for (size_t i = 0; i < m_labels.size(); ++i)
    SetWindowTextW(m_labels[i],
                   (std::wstring(kNames[i]) + L": " + std::to_wstring(colours.*kValues[i])).c_str());
}

ColourSettings ColourPanel::Read() const {
  ColourSettings colours;
  for (size_t i = 0; i < m_sliders.size(); ++i)
    colours.*kValues[i] = static_cast<int>(SendMessageW(m_sliders[i], TBM_GETPOS, 0, 0));
  return colours;
}

void ColourPanel::Report() const {
  ShowNumbers(Read());
  m_onChange(Read());
}

LRESULT CALLBACK ColourPanel::Procedure(HWND hwnd, UINT message, WPARAM wide, LPARAM packed) {
  auto* panel = reinterpret_cast<ColourPanel*>(GetWindowLongPtrW(hwnd, GWLP_USERDATA));
  if (panel && message == WM_HSCROLL) {
    panel->Report();
    if (LOWORD(wide) == TB_ENDTRACK) SetFocus(GetParent(hwnd));  // keys go on to be the player's
    return 0;
  }
  if (panel && message == WM_COMMAND && LOWORD(wide) == kResetButton) {
    panel->SetColours({});
    panel->Report();
    SetFocus(GetParent(hwnd));
    return 0;
  }
  return DefWindowProcW(hwnd, message, wide, packed);
}
