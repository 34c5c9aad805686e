/* SPDX-License-Identifier: MIT
 * The smallest client: a window with five seconds of a moving grey ramp.
 */
#include <nivral/nivral.h>
#include <stdlib.h>
#include <string.h>

enum { kWidth = 640, kHeight = 360, kFrames = 125, kMillisecondsPerFrame = 40 };

/* Y, U and V, one behind the other. */
static void PaintFrame(uint8_t* planes, int frame) {
  for (int row = 0; row < kHeight; ++row)
    for (int column = 0; column < kWidth; ++column)
      planes[row * kWidth + column] = (uint8_t)(16 + (column + 4 * frame) % 220);
  memset(planes + kWidth * kHeight, 128, kWidth * kHeight / 2);
}

static HWND OpenWindow(void) {
  WNDCLASSA windowClass = {0};
  windowClass.lpfnWndProc = DefWindowProcA;
  windowClass.hInstance = GetModuleHandleA(NULL);
  windowClass.lpszClassName = "nivral_minimal";
  RegisterClassA(&windowClass);
  RECT area = {0, 0, kWidth, kHeight};
  AdjustWindowRect(&area, WS_OVERLAPPEDWINDOW, FALSE);
  return CreateWindowA("nivral_minimal", "libnivral", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 40, 40,
                       area.right - area.left, area.bottom - area.top, NULL, NULL, windowClass.hInstance,
                       NULL);
}

static void HandleMessages(void) {
  MSG message;
  while (PeekMessageA(&message, NULL, 0, 0, PM_REMOVE))
    DispatchMessageA(&message);
}

int main(void) {
  uint8_t* planes = malloc(kWidth * kHeight * 3 / 2);
  HWND window = OpenWindow();
  void* pane = NULL;
  uint32_t refused = 0;
  if (!planes || !window) return 1;

  NIVRAL_InitializeEx(1);
  if (NIVRAL_DWOpenDraw(&pane) != 0) return 1;
  NIVRAL_DWSetHwnd(pane, window);
  NIVRAL_DWInitDraw(pane, kWidth, kHeight, 0);
  for (int frame = 0; frame < kFrames; ++frame) {
    HandleMessages();
    PaintFrame(planes, frame);
    refused += NIVRAL_DWDrawYUV420(pane, planes, kWidth, planes + kWidth * kHeight,
                                   planes + kWidth * kHeight * 5 / 4, kWidth / 2, (uint32_t)frame, 0);
    Sleep(kMillisecondsPerFrame);
  }
  NIVRAL_DWCloseDraw(pane);
  NIVRAL_UnInitialize();
  DestroyWindow(window);
  free(planes);
  return refused == 0 ? 0 : 1;
}
