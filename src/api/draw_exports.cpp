// SPDX-License-Identifier: MIT
// NIVRAL_DW*: each checks the handle and forwards to one operation of the displayer behind it.
#include <memory>

#include "api/guard.h"
#include "display/base_displayer.h"
#include "nivral/nivral.h"
#include "util/log_file.h"

namespace libnivral {
namespace {

bool RunsUnderWine() {
  const HMODULE system = GetModuleHandleW(L"ntdll.dll");
  return system && GetProcAddress(system, "wine_get_version");
}

void WarnOfChildWindow(HWND window) {
  if ((GetWindowLongW(window, GWL_STYLE) & WS_CHILD) && RunsUnderWine())
    CLogFile::GetInstance()->Write(2, L"NIVRAL_DWSetHwnd: Wine may show nothing in a child window");
}

}  // namespace
}  // namespace libnivral

using namespace libnivral;  // NOLINT(google-global-names-in-headers): no header

extern "C" {

uint32_t NIVRAL_CALL NIVRAL_DWCloseDraw(void* hDraw) {
  return Forward<BaseDisplayer>(hDraw, [](BaseDisplayer& d) {
    const std::unique_ptr<BaseDisplayer> owner(&d);
    d.FreeDraw();
  });
}

uint32_t NIVRAL_CALL NIVRAL_DWFreeDraw(void* hDraw) {
  return Forward<BaseDisplayer>(hDraw, [](BaseDisplayer& d) { d.FreeDraw(); });
}

uint32_t NIVRAL_CALL NIVRAL_DWInitDraw(void* hDraw, uint32_t width, uint32_t height, uint32_t param) {
  return Forward<BaseDisplayer>(hDraw, [&](BaseDisplayer& d) {
    const int32_t result = d.InitDraw(width, height, param);
    // The client is not told otherwise before its first frame. An unchanged size may give a code as well.
    if (!d.IsInitialized())
      CLogFile::GetInstance()->Write(2, L"NIVRAL_DWInitDraw: the pane cannot draw, code 0x%x", result);
  });
}

uint32_t NIVRAL_CALL NIVRAL_DWDrawYUV420(void* hDraw, uint8_t* pY, uint32_t strideY, uint8_t* pU, uint8_t* pV,
                                         uint32_t strideUV, uint32_t param1, int64_t param2) {
  const auto chroma = static_cast<int32_t>(strideUV);
  return ForwardResult<BaseDisplayer>(hDraw, [&](BaseDisplayer& d) {
    return d.DrawYUV420(pY, static_cast<int32_t>(strideY), pU, chroma, pV, chroma, param1, param2);
  });
}

uint32_t NIVRAL_CALL NIVRAL_DWSetHwnd(void* hDraw, HWND hwnd) {
  return Forward<BaseDisplayer>(hDraw, [&](BaseDisplayer& d) {
    WarnOfChildWindow(hwnd);
    d.SetPlayWnd(hwnd);
  });
}

uint32_t NIVRAL_CALL NIVRAL_DWSetHwndEx(void* hDraw, HWND hwnd, int64_t param, uint32_t flag) {
  return Forward<BaseDisplayer>(hDraw, [&](BaseDisplayer& d) {
    WarnOfChildWindow(hwnd);
    d.SetPlayWndEx(hwnd, param, flag);
  });
}

uint32_t NIVRAL_CALL NIVRAL_DWAdjustedWnd(void* hDraw) {
  return Forward<BaseDisplayer>(hDraw, [](BaseDisplayer& d) { d.AdjustWinRect(); });
}

uint32_t NIVRAL_CALL NIVRAL_DWSetPlayRect(void* hDraw, const RECT* rect) {
  return Forward<BaseDisplayer>(hDraw, [&](BaseDisplayer& d) { d.SetPlayRect(rect); });
}

uint32_t NIVRAL_CALL NIVRAL_DWSetZoom(void* hDraw, uint32_t x, uint32_t y, uint32_t factor) {
  return Forward<BaseDisplayer>(hDraw, [&](BaseDisplayer& d) { d.SetZoom(x, y, factor); });
}

uint32_t NIVRAL_CALL NIVRAL_DWSetMirrorMode(void* hDraw, uint32_t mode) {
  return Forward<BaseDisplayer>(hDraw, [&](BaseDisplayer& d) { d.SetMirrorMode(mode); });
}

uint32_t NIVRAL_CALL NIVRAL_DWSetIndex(void* hDraw, int32_t index) {
  return Forward<BaseDisplayer>(hDraw, [&](BaseDisplayer& d) { d.SetIndex(index); });
}

uint32_t NIVRAL_CALL NIVRAL_DWSetPause(void* hDraw, uint32_t paused) {
  return Forward<BaseDisplayer>(hDraw, [&](BaseDisplayer& d) { d.SetPause(paused); });
}

uint32_t NIVRAL_CALL NIVRAL_DWSetRClickPt(void* hDraw, POINT pt) {
  return ForwardResult<BaseDisplayer>(hDraw, [&](BaseDisplayer& d) { return d.SetRClickPt(pt); });
}

uint32_t NIVRAL_CALL NIVRAL_DWSetOSDText(void* hDraw, int32_t index, const char* text, uint32_t x, uint32_t y,
                                         uint32_t anchor, uint32_t colour) {
  return Forward<BaseDisplayer>(hDraw,
                                [&](BaseDisplayer& d) { d.SetOSDText(index, text, x, y, anchor, colour); });
}

uint32_t NIVRAL_CALL NIVRAL_DWSetMosaics(void* hDraw, const uint8_t* cells) {
  return Forward<BaseDisplayer>(hDraw, [&](BaseDisplayer& d) { d.SetMosaics(cells); });
}

uint32_t NIVRAL_CALL NIVRAL_DWSetMosaicFlag(void* hDraw, uint32_t flag) {
  return Forward<BaseDisplayer>(hDraw, [&](BaseDisplayer& d) { d.SetMosaicFlag(flag); });
}

uint32_t NIVRAL_CALL NIVRAL_DWSetMosaicLevel(void* hDraw, uint32_t level) {
  return Forward<BaseDisplayer>(hDraw, [&](BaseDisplayer& d) { d.SetMosaicLevel(level); });
}

uint32_t NIVRAL_CALL NIVRAL_DWSetMosaicAreaScale(void* hDraw, float top, float left, float bottom,
                                                 float right) {
  return Forward<BaseDisplayer>(hDraw,
                                [&](BaseDisplayer& d) { d.SetMosaicAreaScale(top, left, bottom, right); });
}

uint32_t NIVRAL_CALL NIVRAL_DWUpdateMosaics(void* hDraw, uint32_t commit) {
  return Forward<BaseDisplayer>(hDraw, [&](BaseDisplayer& d) { d.UpdateMosaics(commit); });
}

uint32_t NIVRAL_CALL NIVRAL_DWSetAlgInfo(void* hDraw, int32_t count, const uint32_t* left,
                                         const uint32_t* top, const uint32_t* right, const uint32_t* bottom,
                                         const uint16_t* classId, const uint16_t* distance,
                                         const uint16_t* third, const uint16_t* fourth, uint16_t value) {
  return Forward<BaseDisplayer>(hDraw, [&](BaseDisplayer& d) {
    d.SetAlgInfo(count, left, top, right, bottom, classId, distance, third, fourth, value);
  });
}

uint32_t NIVRAL_CALL NIVRAL_DWSetDsmAlgInfo(void* hDraw, int32_t pointCount, const uint32_t* x,
                                            const uint32_t* y, int32_t boxCount, const uint32_t* left,
                                            const uint32_t* top, const uint32_t* right,
                                            const uint32_t* bottom, uint16_t value) {
  return Forward<BaseDisplayer>(hDraw, [&](BaseDisplayer& d) {
    d.SetDsmAlgInfo(pointCount, x, y, boxCount, left, top, right, bottom, value);
  });
}

uint32_t NIVRAL_CALL NIVRAL_DWSetDecCB(void* hDraw, void* user, NivralDecodeCallback callback) {
  return Forward<BaseDisplayer>(hDraw, [&](BaseDisplayer& d) { d.SetDecCB(user, callback); });
}

uint32_t NIVRAL_CALL NIVRAL_DWSetDisplayCB(void* hDraw, void* user, NivralDisplayCallback callback) {
  return Forward<BaseDisplayer>(hDraw, [&](BaseDisplayer& d) { d.SetDisplayCB(user, callback); });
}

uint32_t NIVRAL_CALL NIVRAL_DWSetDrawYUV420CB(void* hDraw, void* user, NivralFrameCallback callback) {
  return Forward<BaseDisplayer>(hDraw, [&](BaseDisplayer& d) { d.SetDrawYUV420CB(user, callback); });
}

uint32_t NIVRAL_CALL NIVRAL_DWSetFlashWndCB(void* hDraw, void* user, NivralFlashWndCallback callback) {
  return Forward<BaseDisplayer>(hDraw, [&](BaseDisplayer& d) { d.SetFlashWndCB(user, callback); });
}

}  // extern "C"
